package qx.test;

import android.content.res.AssetManager;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;
import com.zorvane.android.sdk.qxe.font.FontManager;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;

/** Fonts from files, from memory and from assets, and names of all kinds. */
public final class FontsTest {
    private static final byte[] GARBAGE = "this is no font, however long one looks at it".getBytes();

    private static String roboto;
    private static byte[] robotoBytes;
    private static int[] robotoPicture;
    private static Path folder;

    private interface Choose {
        boolean font(QxText text) throws Throwable;
    }

    /** Draws a word with the font that `choose` sets. */
    private static int[] picture(Choose choose) throws Throwable {
        TextView view = Texts.view(roboto, "Hamburg", 30, 140, 40);
        try (QxText text = new QxText()) {
            Check.equal(true, choose.font(text), "choosing the font");
            text.capture(view);
            return text.render();
        }
    }

    private static boolean refuses(Choose choose) throws Throwable {
        try (QxText text = new QxText()) {
            return !choose.font(text);
        }
    }

    private static void filesBytesAndAssetsDrawTheSame() throws Throwable {
        int ink = 0;
        for (int pixel : robotoPicture) if (pixel != 0) ++ink;
        Check.that(ink > 200, "the picture has ink: " + ink);
        Check.equal(robotoPicture, picture(text -> text.setFontData("memory.ttf", robotoBytes)), "bytes");
        Check.equal(robotoPicture, picture(text -> text.setFontFile("memory.ttf")), "bytes by their name");
        Files.write(folder.resolve("asset.ttf"), robotoBytes);
        try (AssetManager assets = new AssetManager(folder.toString())) {
            Check.equal(robotoPicture, picture(text -> text.setFontAsset(assets, "asset.ttf")), "asset");
            Files.delete(folder.resolve("asset.ttf"));
            Check.equal(robotoPicture, picture(text -> text.setFontAsset(assets, "asset.ttf")),
                    "an asset that is registered is not read again");
        }
        Check.equal(true, FontManager.insertFontData("inserted.ttf", robotoBytes), "insert");
        Check.equal(true, FontManager.insertFontData("inserted.ttf", GARBAGE), "a name that is taken");
        Check.equal(robotoPicture, picture(text -> text.setFontFile("inserted.ttf")), "the first font stays");
    }

    private static void namesMayHoldAnything() throws Throwable {
        for (String name : new String[] {"sm\uD83D\uDE00ile.ttf", "ein\u00DF\u6F22.ttf", "nul\0inside.ttf"}) {
            Check.equal(true, FontManager.insertFontData(name, robotoBytes), "insert " + name);
            Check.equal(robotoPicture, picture(text -> text.setFontFile(name)), "draw with " + name);
        }
        Check.that(refuses(text -> text.setFontFile("nul")), "a name does not end at its NUL");
        // The VM may run in an ASCII locale in which it cannot name such a file itself: a shell can.
        String smile = folder + "/\uD83D\uDE00.ttf";
        new ProcessBuilder("sh", "-c", "cp \"$1\" \"$2/$(printf '\\360\\237\\230\\200').ttf\"", "sh", roboto,
                folder.toString()).start().waitFor();
        Check.equal(robotoPicture, picture(text -> text.setFontFile(smile)), "a file with such a name");
        new ProcessBuilder("sh", "-c", "rm \"$1\"/*.ttf", "sh", folder.toString()).start().waitFor();
    }

    private static void whatIsNoFontIsRefused() throws Throwable {
        Files.write(folder.resolve("garbage"), GARBAGE);
        Files.write(folder.resolve("empty"), new byte[0]);
        Check.that(refuses(text -> text.setFontFile(folder + "/missing")), "a file that is not there");
        Check.that(refuses(text -> text.setFontFile(folder.toString())), "a directory");
        Check.that(refuses(text -> text.setFontFile(folder + "/garbage")), "a file of garbage");
        Check.that(refuses(text -> text.setFontFile("")), "an empty name");
        Check.that(refuses(text -> text.setFontData("garbage bytes", GARBAGE)), "bytes of garbage");
        Check.that(refuses(text -> text.setFontData("no bytes", new byte[0])), "no bytes");
        Check.equal(false, FontManager.insertFontData("more garbage", GARBAGE), "inserted garbage");
        try (AssetManager assets = new AssetManager(folder.toString())) {
            for (String name : new String[] {"garbage", "empty", "../" + folder.getFileName() + "/garbage"})
                Check.that(refuses(text -> text.setFontAsset(assets, name)), "asset " + name);
        }
        Check.equal(robotoPicture, picture(text -> {
            boolean chosen = text.setFontFile(roboto);
            return !text.setFontData("still garbage", GARBAGE) && chosen;
        }), "the font stays what it was");
    }

    private static void refusalsSayWhy() throws Throwable {
        AssetManager closed = new AssetManager(folder.toString());
        closed.close();
        AssetManager open = new AssetManager(folder.toString());
        FontManager.insertFontData("known", robotoBytes);
        Object[][] rows = {
            {(Choose) text -> text.setFontFile(null), "QxText_SetFont() - Fail to get fontFile string"},
            {(Choose) text -> text.setFontFamilyName(null),
                "QxText_SetFontFamilyName() - Fail to get familyName string"},
            {(Choose) text -> text.setFontData(null, GARBAGE), "QxText_SetFont2() - fontName is NULL"},
            {(Choose) text -> text.setFontData("n", null), "QxText_SetFont2() - buffer is NULL"},
            {(Choose) text -> text.setFontAsset(null, "known"), "QxText_SetFont3() - assetManager is NULL"},
            {(Choose) text -> text.setFontAsset(open, null), "QxText_SetFont3() - fontName is NULL"},
            {(Choose) text -> text.setFontAsset(open, "missing"), "QxText_SetFont3() - _ASSET_NOT_FOUND_"},
            {(Choose) text -> text.setFontAsset(closed, "missing"), "QxText_SetFont3() - _ASSET_NOT_FOUND_"},
        };
        for (Object[] row : rows) {
            Log.forget();
            Check.that(refuses((Choose) row[0]), (String) row[1]);
            Check.equal(List.of("E QxText_JNI: " + row[1]), Log.take("E QxText_JNI"), "message");
        }
        open.close();
        Log.forget();
        Check.equal(false, FontManager.insertFontData(null, GARBAGE), "insert without a name");
        Check.equal(false, FontManager.insertFontData("n", null), "insert without bytes");
        Check.equal(List.of("E Init_QxFontManager_JNI: QxFontManager_InsertFontData() - fontName is NULL",
                "E Init_QxFontManager_JNI: QxFontManager_InsertFontData() - buffer is NULL"),
                Log.take("E Init_QxFontManager_JNI"), "messages");
    }

    public static void main(String[] arguments) throws Throwable {
        QxLibrary.load(System.getProperty("qx.library"));
        roboto = Texts.font("Roboto-Regular.ttf");
        robotoBytes = Files.readAllBytes(Path.of(roboto));
        folder = Files.createTempDirectory("qx-fonts");
        robotoPicture = picture(text -> text.setFontFile(roboto));
        Check.test("files, bytes and assets draw the same", FontsTest::filesBytesAndAssetsDrawTheSame);
        Check.test("names may hold anything", FontsTest::namesMayHoldAnything);
        Check.test("what is no font is refused", FontsTest::whatIsNoFontIsRefused);
        Check.test("refusals say why", FontsTest::refusalsSayWhy);
        new ProcessBuilder("rm", "-r", folder.toString()).start().waitFor();
        Check.finish();
    }
}
