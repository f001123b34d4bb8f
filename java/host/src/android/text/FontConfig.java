package android.text;

/** The system's fonts: named families, and fallbacks in order of preference. */
public final class FontConfig {
    private final Family[] families;

    public FontConfig(Family[] families) {
        this.families = families;
    }

    public Family[] getFamilies() {
        return families;
    }

    /** Fonts that share a look. */
    public static final class Family {
        public static final int VARIANT_DEFAULT = 0;
        public static final int VARIANT_COMPACT = 1;
        public static final int VARIANT_ELEGANT = 2;

        private final String name;
        private final Font[] fonts;
        private final String languages;
        private final int variant;

        /**
         * @param name null for a fallback.
         * @param languages comma separated tags, null when the family says nothing.
         */
        public Family(String name, Font[] fonts, String languages, int variant) {
            this.name = name;
            this.fonts = fonts;
            this.languages = languages;
            this.variant = variant;
        }

        public String getName() {
            return name;
        }

        public Font[] getFonts() {
            return fonts;
        }

        public String getLanguages() {
            return languages;
        }

        public int getVariant() {
            return variant;
        }
    }

    /** One face of a font file. */
    public static final class Font {
        private final String fontName;
        private final int ttcIndex;
        private final int weight;
        private final boolean italic;
        private final String fallbackFor;

        /**
         * @param fontName path of the file.
         * @param fallbackFor name of the only family that this font helps out, null for all.
         */
        public Font(String fontName, int ttcIndex, int weight, boolean italic, String fallbackFor) {
            this.fontName = fontName;
            this.ttcIndex = ttcIndex;
            this.weight = weight;
            this.italic = italic;
            this.fallbackFor = fallbackFor;
        }

        public String getFontName() {
            return fontName;
        }

        public int getTtcIndex() {
            return ttcIndex;
        }

        public int getWeight() {
            return weight;
        }

        public boolean isItalic() {
            return italic;
        }

        public String getFallbackFor() {
            return fallbackFor;
        }
    }
}
