package com.zorvane.android.sdk.qxe;

/**
 * Loads the native library. Call {@link #load()} once, before the first use of {@link QxText} or
 * {@link com.zorvane.android.sdk.qxe.font.FontManager}; calling it again does nothing.
 *
 * <p>None of the other classes loads the library from a static initialiser: the load initialises all of them, and two
 * threads that first touched two of them would wait for each other.
 */
public final class QxLibrary {
    private static final String NAME = "QxEffect.fonteffect.zorvane";

    private static boolean loaded;

    private QxLibrary() {}

    /**
     * Loads the library from the application's library path.
     *
     * @throws UnsatisfiedLinkError if it is not there.
     */
    public static synchronized void load() {
        if (loaded) return;
        System.loadLibrary(NAME);
        loaded = true;
    }

    /**
     * Loads the library from a file, for programs that keep it elsewhere.
     *
     * @param path absolute path of the shared object.
     * @throws UnsatisfiedLinkError if it is not there.
     */
    public static synchronized void load(String path) {
        if (loaded) return;
        System.load(path);
        loaded = true;
    }
}
