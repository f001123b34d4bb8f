package com.zorvane.android.sdk.qxe.font;

import android.text.FontConfig;

/**
 * The fonts of the process. What is registered here stays until the process ends.
 */
public final class FontManager {
    private FontManager() {}

    /**
     * Registers a font from its bytes. A text uses it when its font file is set to this name, see
     * {@link com.zorvane.android.sdk.qxe.QxText#setFontFile}. A name that is registered already is a success, and the
     * first font stays.
     *
     * @param name any name; its style marks count as in file names ("-Bold", "-Light", ...).
     * @param font the bytes of a font file; copied.
     * @return false for null and for bytes that are no font.
     */
    public static boolean insertFontData(String name, byte[] font) {
        return QxFontManager_InsertFontData(name, font);
    }

    /**
     * Hands over the system's font configuration, from which texts take what their own font lacks. The first
     * configuration counts for the life of the process; a later call does nothing and returns true.
     *
     * @return false if the configuration cannot be read; another may be tried then.
     */
    public static boolean setFontConfig(FontConfig config) {
        return QxFontManager_SetFontConfig(config);
    }

    private static native boolean QxFontManager_InsertFontData(String fontName, byte[] buffer);

    private static native boolean QxFontManager_SetFontConfig(FontConfig fontConfig);
}
