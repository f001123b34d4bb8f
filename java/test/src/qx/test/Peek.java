package qx.test;

/** Looks into the native objects behind handles, through the library's C++ interface. */
final class Peek {
    static {
        System.load(System.getProperty("qx.test.peek"));
    }

    private Peek() {}

    static native boolean exists(int handle);

    /** Nine numbers a line: x, y, start, end, direction, left, top, right, bottom. */
    static native int[] lines(int handle);

    /** Width, height, paddings left, top, right, bottom, gravity, line limit, max lines. */
    static native int[] view(int handle);

    /** Text colour, bold, italic. */
    static native int[] style(int handle);

    /** Wide characters; null when there is no text. */
    static native int[] text(int handle);

    /** Size, scale X, skew X, embolden, letter spacing, variant, flags, alignment. */
    static native float[] paint(int handle);

    static native int localeList(int handle);

    static native String features(int handle);

    /** The key that tells the effects and their settings. */
    static native byte[] effectKey(int handle);

    /** The key of a stack with one effect that was added in C++; see EffectsTest for its settings. */
    static native byte[] wantedKey(String effect);

    static native void setVerboseLog(boolean on);
}
