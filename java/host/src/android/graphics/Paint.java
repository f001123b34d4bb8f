package android.graphics;

import android.os.LocaleList;

/** How text is drawn. */
public class Paint {
    public static final int ANTI_ALIAS_FLAG = 0x01;
    public static final int FILTER_BITMAP_FLAG = 0x02;
    public static final int UNDERLINE_TEXT_FLAG = 0x08;
    public static final int STRIKE_THRU_TEXT_FLAG = 0x10;
    public static final int FAKE_BOLD_TEXT_FLAG = 0x20;
    public static final int LINEAR_TEXT_FLAG = 0x40;
    public static final int SUBPIXEL_TEXT_FLAG = 0x80;
    public static final int DEV_KERN_TEXT_FLAG = 0x100;
    public static final int EMBEDDED_BITMAP_TEXT_FLAG = 0x400;

    /** Every paint starts with these. */
    private static final int HIDDEN_FLAGS = DEV_KERN_TEXT_FLAG | EMBEDDED_BITMAP_TEXT_FLAG | FILTER_BITMAP_FLAG;

    public enum Align { LEFT, CENTER, RIGHT }

    private int flags;
    private int color = 0xFF000000;
    private float textSize = 12;
    private float textScaleX = 1;
    private float textSkewX;
    private float letterSpacing;
    private boolean elegantTextHeight;
    private String fontFeatureSettings;
    private LocaleList textLocales = LocaleList.getDefault();
    private Align textAlign = Align.LEFT;
    private Typeface typeface;

    public Paint() {
        this(0);
    }

    public Paint(int flags) {
        this.flags = flags | HIDDEN_FLAGS;
    }

    public int getFlags() {
        return flags;
    }

    public void setFlags(int flags) {
        this.flags = flags;
    }

    private void setFlag(int flag, boolean on) {
        flags = on ? flags | flag : flags & ~flag;
    }

    public void setAntiAlias(boolean on) {
        setFlag(ANTI_ALIAS_FLAG, on);
    }

    public boolean isFakeBoldText() {
        return (flags & FAKE_BOLD_TEXT_FLAG) != 0;
    }

    public void setFakeBoldText(boolean on) {
        setFlag(FAKE_BOLD_TEXT_FLAG, on);
    }

    public int getColor() {
        return color;
    }

    public void setColor(int color) {
        this.color = color;
    }

    public float getTextSize() {
        return textSize;
    }

    /** Pixels; not above 0 changes nothing. */
    public void setTextSize(float size) {
        if (size > 0) textSize = size;
    }

    public float getTextScaleX() {
        return textScaleX;
    }

    public void setTextScaleX(float scale) {
        textScaleX = scale;
    }

    public float getTextSkewX() {
        return textSkewX;
    }

    public void setTextSkewX(float skew) {
        textSkewX = skew;
    }

    /** In em. */
    public float getLetterSpacing() {
        return letterSpacing;
    }

    public void setLetterSpacing(float spacing) {
        letterSpacing = spacing;
    }

    public boolean isElegantTextHeight() {
        return elegantTextHeight;
    }

    public void setElegantTextHeight(boolean elegant) {
        elegantTextHeight = elegant;
    }

    /** Null when none were set. */
    public String getFontFeatureSettings() {
        return fontFeatureSettings;
    }

    public void setFontFeatureSettings(String settings) {
        fontFeatureSettings = settings == null || settings.isEmpty() ? null : settings;
    }

    public LocaleList getTextLocales() {
        return textLocales;
    }

    public void setTextLocales(LocaleList locales) {
        if (locales == null) throw new IllegalArgumentException("locales cannot be null");
        textLocales = locales;
    }

    public Align getTextAlign() {
        return textAlign;
    }

    public void setTextAlign(Align align) {
        textAlign = align;
    }

    public Typeface getTypeface() {
        return typeface;
    }

    public Typeface setTypeface(Typeface typeface) {
        this.typeface = typeface;
        return typeface;
    }
}
