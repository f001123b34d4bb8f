package android.graphics;

import android.text.FontConfig;

/** A font with a style, and behind it the fonts of the system. */
public class Typeface {
    public static final int NORMAL = 0;
    public static final int BOLD = 1;
    public static final int ITALIC = 2;

    /** The system's default font. */
    public static final Typeface DEFAULT = new Typeface(null, NORMAL);

    private static volatile FontConfig systemFonts = new FontConfig(new FontConfig.Family[0]);

    private final String file;
    private final int style;

    private Typeface(String file, int style) {
        this.file = file;
        this.style = style;
    }

    public static Typeface createFromFile(String path) {
        return new Typeface(path, NORMAL);
    }

    /** The same font in another style, which is imitated where the font has it not. */
    public static Typeface create(Typeface family, int style) {
        Typeface base = family == null ? DEFAULT : family;
        return new Typeface(base.file, style);
    }

    public int getStyle() {
        return style;
    }

    public final boolean isBold() {
        return (style & BOLD) != 0;
    }

    public final boolean isItalic() {
        return (style & ITALIC) != 0;
    }

    /** Desktop only: the system's fonts, which a device reads from its own configuration. */
    public static void setSystemFonts(FontConfig config) {
        systemFonts = config;
    }

    /** Desktop only. */
    public static FontConfig getSystemFonts() {
        return systemFonts;
    }

    /** Desktop only: the font's file, null for the system's default font. */
    public String getFile() {
        return file;
    }
}
