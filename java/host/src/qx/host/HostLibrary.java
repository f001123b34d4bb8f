package qx.host;

import android.graphics.Paint;
import android.graphics.Typeface;
import android.text.FontConfig;
import android.text.Layout;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;

/** The native part of these classes. The property {@code qx.host.library} names its file. */
public final class HostLibrary {
    private static boolean loaded;

    private HostLibrary() {}

    private static synchronized void load() {
        if (!loaded) System.load(System.getProperty("qx.host.library"));
        loaded = true;
    }

    public static long newAssetManager(byte[] directory) {
        load();
        return makeAssetManager(directory);
    }

    public static void deleteAssetManager(long manager) {
        if (manager != 0) freeAssetManager(manager);
    }

    /** Breaks a text into lines. */
    public static LaidOutLines layOut(String text, Paint paint, int width, Layout.Alignment alignment, float spacing) {
        load();
        Fonts fonts = new Fonts();
        Typeface typeface = paint.getTypeface() == null ? Typeface.DEFAULT : paint.getTypeface();
        fonts.add(typeface, Typeface.getSystemFonts());
        float[] numbers = {paint.getTextSize(), paint.getTextScaleX(), paint.getTextSkewX(), paint.getLetterSpacing(),
            width, spacing};
        int[] settings = {paint.getFlags(), paint.isElegantTextHeight() ? 1 : 0, weight(typeface),
            typeface.isItalic() ? 1 : 0, alignment.ordinal()};
        return new LaidOutLines(layOut(text.toCharArray(), numbers, settings, utf8(paint.getFontFeatureSettings()),
                utf8(paint.getTextLocales().toLanguageTags()), fonts.files.toArray(new byte[0][]), fonts.faces(),
                fonts.languages.toArray(new byte[0][])));
    }

    /** -1: as the font says. */
    private static int weight(Typeface typeface) {
        if (typeface.isBold()) return 700;
        return typeface.getFile() == null ? 400 : -1;
    }

    private static byte[] utf8(String text) {
        return text == null ? new byte[0] : text.getBytes(StandardCharsets.UTF_8);
    }

    /** Faces and the families that they belong to, in the order in which a text looks for its glyphs. */
    private static final class Fonts {
        final List<byte[]> files = new ArrayList<>();
        final List<byte[]> languages = new ArrayList<>();
        /** Family, index in its file, weight (-1: as the font says), variant of the family. */
        private final List<int[]> faces = new ArrayList<>();

        void add(Typeface own, FontConfig system) {
            if (own.getFile() != null) addFace(addFamily(null), own.getFile(), 0, -1, 0);
            boolean named = false;
            for (FontConfig.Family source : system.getFamilies()) {
                // Of the families with a name the first serves all texts; the others would have to be asked for.
                if (source.getName() != null && named) continue;
                named |= source.getName() != null;
                int family = addFamily(source.getLanguages());
                for (FontConfig.Font font : source.getFonts()) {
                    if (!font.isItalic() && (font.getFallbackFor() == null || font.getFallbackFor().isEmpty()))
                        addFace(family, font.getFontName(), font.getTtcIndex(), font.getWeight(), source.getVariant());
                }
            }
        }

        private int addFamily(String tags) {
            languages.add(utf8(tags));
            return languages.size() - 1;
        }

        private void addFace(int family, String file, int ttcIndex, int weight, int variant) {
            files.add(utf8(file));
            faces.add(new int[] {family, ttcIndex, weight, variant});
        }

        int[] faces() {
            return faces.stream().flatMapToInt(java.util.Arrays::stream).toArray();
        }
    }

    private static native long makeAssetManager(byte[] directory);

    private static native void freeAssetManager(long manager);

    private static native int[] layOut(char[] text, float[] numbers, int[] settings, byte[] features, byte[] locales,
            byte[][] files, int[] faces, byte[][] languages);
}
