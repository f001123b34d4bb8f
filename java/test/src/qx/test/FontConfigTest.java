package qx.test;

import android.text.FontConfig;
import android.text.FontConfig.Family;
import android.text.FontConfig.Font;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;
import com.zorvane.android.sdk.qxe.font.FontManager;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/**
 * Which families of a font configuration are taken, and when they are loaded. A process takes one configuration, so
 * what fails comes first; with the argument "empty" it takes one without families instead.
 */
public final class FontConfigTest {
    private static String regular;

    private static Font font(String path) {
        return new Font(path, 0, 400, false, null);
    }

    private static Family fallback(String languages, Font... fonts) {
        return new Family(null, fonts, languages, 0);
    }

    /** The families that were taken, as "languages loaded". */
    private static List<String> taken() {
        List<String> families = new ArrayList<>();
        for (String line : Log.take("D Init_QxFontManager_JNI")) {
            if (!line.contains("Family lang(")) continue;
            String languages = line.substring(line.indexOf("lang(") + 5, line.indexOf(") localeListId"));
            families.add(languages + " " + line.endsWith("loaded(TRUE)"));
        }
        return families;
    }

    private static void unusableConfigurationsAreRefused() {
        Check.equal(false, FontManager.setFontConfig(null), "null");
        Check.that(Log.take("Init_QxFontManager_JNI").contains(
                "E Init_QxFontManager_JNI: QxFontManager_SetFontConfig - jFontConfig is NULL"), "message");
        Check.equal(false, FontManager.setFontConfig(new FontConfig(null)), "no families");
        Check.that(Log.take("Init_QxFontManager_JNI").contains(
                "E Init_QxFontManager_JNI: QxFontManager_SetFontConfig - cannot convert to native families"),
                "message");
    }

    /** A path to a readable font that is not one any more when it is cut after 1023 bytes. */
    private static String tooLongPath() throws Exception {
        Path folder = Files.createTempDirectory("qx");
        Path inner = Files.createDirectory(folder.resolve("n".repeat(200)));
        StringBuilder path = new StringBuilder(folder.toString());
        while (path.length() < 1100) path.append("/").append(inner.getFileName()).append("/..");
        Files.copy(Path.of(regular), folder.resolve("font.ttf"));
        path.append("/font.ttf");
        for (Path made : new Path[] {folder.resolve("font.ttf"), inner, folder}) made.toFile().deleteOnExit();
        Check.that(Files.isReadable(Path.of(path.toString())), "the whole path is readable");
        Check.that(!Files.exists(Path.of(path.substring(0, 1023))), "the path that was cut is not");
        return path.toString();
    }

    private static Family[] families() throws Exception {
        String medium = Texts.font("Roboto-Medium.ttf");
        String bold = Texts.font("Roboto-Bold.ttf");
        String arabic = Texts.font("NotoNaskhArabic-Regular.ttf");
        Path unreadable = Files.createTempFile("qx", ".ttf");
        Files.delete(unreadable);
        Family[] families = {
            null,
            new Family("sans-serif", new Font[] {font(regular), null, new Font(medium, 0, 500, false, null),
                new Font(bold, 0, 700, false, null)}, null, 0),
            new Family("serif", new Font[] {font(regular)}, "fr", 0),
            fallback("und-Arab", font(arabic)),
            fallback("ja", new Font(Texts.font("NotoSansCJK-Regular.ttc"), 0, 400, false, null)),
            fallback("und-Zsye", font(Texts.font("NotoColorEmoji.ttf"))),
            fallback("und-Zsym", font(regular)),
            fallback("und-Zsym,en", font(regular)),
            fallback("", font(regular)),
            fallback(null, font(regular)),
            fallback("ko", font(unreadable.toString())),
            fallback("th", new Font(regular, 0, 400, true, null)),
            fallback("he", new Font(regular, 0, 400, false, "serif")),
            fallback("el", new Font(regular, 0, 400, false, "")),
            fallback("hi", (Font[]) null),
            fallback("ru", font(null), font("")),
            fallback("ka", font(tooLongPath())),
        };
        // Many families: what the bridge borrows from the VM must go back as it goes along.
        Family[] many = Arrays.copyOf(families, 400);
        Arrays.fill(many, families.length, many.length, fallback("xx", new Font(regular, 0, 400, true, null)));
        return many;
    }

    private static void familiesAreChosen() throws Throwable {
        Log.forget();
        Check.equal(true, FontManager.setFontConfig(new FontConfig(families())), "configuration");
        Check.equal(List.of(" true", "und-Arab false", "ja false", "und-Zsye true", "und-Zsym true",
                "und-Zsym,en false", " true", " true", "el false"), taken(), "families");
        Check.equal(true, FontManager.setFontConfig(null), "a later one is not looked at");
        Check.that(Log.take("Init_QxFontManager_JNI").contains(
                "D Init_QxFontManager_JNI: QxFontManager_SetFontConfig - already set"), "and the log says why");
    }

    private static boolean hasInk(int[] pixels) {
        for (int pixel : pixels) if (pixel != 0) return true;
        return false;
    }

    private static int[] picture(QxText text, String content) {
        TextView view = Texts.view(regular, content, 40, 200, 60);
        text.capture(view);
        return text.render();
    }

    private static void familyNamesDecideAboutMediumWeights() throws Throwable {
        byte[] arabic = Files.readAllBytes(Path.of(Texts.font("NotoNaskhArabic-Regular.ttf")));
        // The letters come from the default family, in the weight that the name of the text's own font asks for.
        FontManager.insertFontData("x-Medium.ttf", arabic);
        FontManager.insertFontData("x-Bold.ttf", arabic);
        try (QxText text = new QxText()) {
            Check.equal(true, text.setFontFile("x-Bold.ttf"), "bold");
            int[] bold = picture(text, "Hamburg");
            Check.that(hasInk(bold), "the default family serves");
            text.setFontFile("x-Medium.ttf");
            int[] medium = picture(text, "Hamburg");
            Check.that(!Arrays.equals(bold, medium), "medium differs from bold");
            Check.equal(true, text.setFontFamilyName("zvc-roboto-light"), "family");
            Check.equal(bold, picture(text, "Hamburg"), "the light family's medium is bold");
        }
    }

    private static void languagesAreLoadedWhenATextAsks() throws Throwable {
        try (QxText text = new QxText()) {
            text.setFontFile(regular);
            int[] before = picture(text, "\u0633\u0644\u0627\u0645");
            Check.that(hasInk(before), "Arabic");
            text.setFontFile(Texts.font("NotoNaskhArabic-Regular.ttf"));
            Check.equal(picture(text, "\u0633\u0644\u0627\u0645"), before, "it came from the Arabic family");
        }
    }

    public static void main(String[] arguments) throws Throwable {
        QxLibrary.load(System.getProperty("qx.library"));
        regular = Texts.font("Roboto-Regular.ttf");
        Peek.setVerboseLog(true);
        Check.test("unusable configurations are refused", FontConfigTest::unusableConfigurationsAreRefused);
        if (arguments.length > 0) {
            Check.equal(true, FontManager.setFontConfig(new FontConfig(new Family[0])), "an empty configuration");
            Check.equal(true, FontManager.setFontConfig(new FontConfig(families())), "locks later ones out");
            Check.equal(List.of(), taken(), "families");
            Check.finish();
        }
        Check.test("families are chosen", FontConfigTest::familiesAreChosen);
        Check.test("family names decide about medium weights", FontConfigTest::familyNamesDecideAboutMediumWeights);
        Check.test("languages are loaded when a text asks", FontConfigTest::languagesAreLoadedWhenATextAsks);
        Check.finish();
    }
}
