package android.view;

/** Where a thing stands in its place. */
public class Gravity {
    public static final int CENTER_HORIZONTAL = 0x01;
    public static final int LEFT = 0x03;
    public static final int RIGHT = 0x05;
    public static final int FILL_HORIZONTAL = 0x07;
    public static final int CENTER_VERTICAL = 0x10;
    public static final int TOP = 0x30;
    public static final int BOTTOM = 0x50;
    public static final int FILL_VERTICAL = 0x70;
    public static final int START = 0x00800003;
    public static final int END = 0x00800005;
    public static final int RELATIVE_HORIZONTAL_GRAVITY_MASK = 0x00800007;

    private Gravity() {}
}
