package qx.test;

import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;
import com.zorvane.android.sdk.qxe.util.QxError;
import java.util.List;

/** Handles, the end of instances, error 19 and whose error it is. */
public final class LifecycleTest {
    /** Every native that needs a bound text, with arguments that bind, its failure value and the line it reports. */
    private static final Object[][] BOUND_NATIVES = {
        {"QxText_AddInnerShadowTextEffect", new Object[] {1f, 2f, 3f, 4, 1f}, -1, 179},
        {"QxText_AddLinearGradientTextEffect", new Object[] {1f, 1f, null, null, null, 1f}, -1, 196},
        {"QxText_AddOuterGlowTextEffect", new Object[] {1f, 2, 1f}, -1, 257},
        {"QxText_AddOuterShadowTextEffect", new Object[] {1f, 2f, 3f, 4, 1f}, -1, 274},
        {"QxText_AddStrokeTextEffect", new Object[] {1f, 2, 1f, 0, 1}, -1, 291},
        {"QxText_ClearAllTextEffect", new Object[] {}, null, 317},
        {"QxText_RenderTextEffect", new Object[] {}, null, 332},
        {"QxText_SetFontFamilyName", new Object[] {"f"}, false, 356},
        {"QxText_SetFont", new Object[] {"f"}, false, 375},
        {"QxText_SetFont2", new Object[] {"f", new byte[1]}, false, 394},
        {"QxText_SetFont3", new Object[] {null, "f"}, false, 432},
        {"QxText_SetPaint", new Object[] {null}, false, 484},
        {"QxText_SetView", new Object[] {null}, false, 616},
        {"QxText_SetLine", new Object[] {1}, false, 709},
        {"QxText_SetLayout", new Object[] {null}, false, 724},
        {"QxText_GetDrawingBitmapSize", new Object[] {}, null, 964},
        {"QxText_GetEffectLeftOffset", new Object[] {}, 0, 976},
        {"QxText_GetEffectTopOffset", new Object[] {}, 0, 984},
        {"QxText_GetEffectRightOffset", new Object[] {}, 0, 992},
        {"QxText_GetEffectBottomOffset", new Object[] {}, 0, 1000},
    };

    private static void unusedInstancesMakeNothing() throws Throwable {
        QxText text = new QxText();
        Texts.call(text, "QxText_finalize");
        Texts.call(text, "QxText_ClearAllTextEffect");
        Check.equal(-1, Texts.handle(text), "handle after finalize and clear");
        Check.equal(List.of(), Log.take("E QxText_JNI"), "error lines");
    }

    private static void firstCallBinds() throws Throwable {
        QxText first = new QxText();
        Check.equal(0, first.addStroke(2, 0xFF00FF00, 1, QxText.STROKE_CENTER), "id of the first effect");
        Check.equal(1, Texts.handle(first), "first handle of the process");
        Check.that(Log.take("QxText_JNI").contains("D QxText_JNI: GetBoundTextObject - hande = 0"),
                "binding is logged");
        // A call that fails makes an object as well, before it looks at its arguments.
        QxText second = new QxText();
        Check.equal(false, second.setFontFile(null), "font without a name");
        Check.equal(2, Texts.handle(second), "handle of a failed call");
        first.close();
        second.close();
        QxText third = Texts.bound();
        Check.equal(3, Texts.handle(third), "handles are never used again");
        third.close();
    }

    private static void unknownHandlesAreErrorNineteen() throws Throwable {
        for (int handle : new int[] {0, 9999}) {
            for (Object[] row : BOUND_NATIVES) {
                QxText text = new QxText();
                Texts.setHandle(text, handle);
                Log.forget();
                Check.equal(row[2], Texts.call(text, (String) row[0], (Object[]) row[1]), row[0] + " result");
                Check.that(Log.take("QxText_JNI").contains("E QxText_JNI: @ Native Error 19 : " + row[3]),
                        row[0] + " reports line " + row[3]);
                Check.equal(QxError.NOT_BOUND, QxError.last(), row[0] + " error");
                Check.equal(handle, Texts.handle(text), row[0] + " leaves the handle");
                Texts.setHandle(text, -1);
            }
        }
    }

    private static void theEndOfAnInstance() throws Throwable {
        QxText text = Texts.bound();
        int handle = Texts.handle(text);
        Check.that(Peek.exists(handle), "object exists");
        Log.forget();
        Texts.call(text, "QxText_finalize");
        Check.that(Log.take("QxText_JNI").contains("D QxText_JNI: finalize : RH " + handle), "finalize is logged");
        Check.that(!Peek.exists(handle), "object is gone");
        Check.equal(handle, Texts.handle(text), "the handle stays");
        Texts.call(text, "QxText_finalize");
        Check.equal(List.of(), Log.take("QxText_JNI"), "a second finalize says nothing");
        Check.equal(-1, text.addOuterGlow(1, 2, 1), "calls after the end fail");

        for (boolean used : new boolean[] {true, false}) {
            QxText closed = used ? Texts.bound() : new QxText();
            int before = Texts.handle(closed);
            closed.close();
            closed.close();
            Check.that(!Peek.exists(before), "closing frees");
            Check.equal(false, closed.setLineLimit(1), "a closed instance fails");
            Check.equal(QxError.NOT_BOUND, QxError.last(), "and says so");
        }
    }

    private static void errorsBelongToTheirThread() throws Throwable {
        int[] seen = new int[3];
        Thread other = new Thread(() -> {
            seen[0] = QxError.last();
            QxText text = Texts.bound();
            text.close();
            text.setLineLimit(1);
            seen[1] = QxError.last();
            new QxText().close();
            seen[2] = QxError.last();
        });
        other.start();
        other.join();
        Check.equal(new int[] {QxError.NONE, QxError.NOT_BOUND, QxError.NOT_BOUND}, seen,
                "a fresh thread, its failure, and after a success");

        Thread fresh = new Thread(() -> seen[0] = QxError.last());
        fresh.start();
        fresh.join();
        Check.equal(QxError.NONE, seen[0], "the failure of one thread shows on no other");
    }

    public static void main(String[] arguments) {
        QxLibrary.load(System.getProperty("qx.library"));
        Check.test("unused instances make nothing", LifecycleTest::unusedInstancesMakeNothing);
        Check.test("the first call binds", LifecycleTest::firstCallBinds);
        Check.test("unknown handles are error 19", LifecycleTest::unknownHandlesAreErrorNineteen);
        Check.test("the end of an instance", LifecycleTest::theEndOfAnInstance);
        Check.test("errors belong to their thread", LifecycleTest::errorsBelongToTheirThread);
        Check.finish();
    }
}
