package qx.test;

import android.graphics.Paint;
import android.text.SpannableString;
import android.text.style.BackgroundColorSpan;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.concurrent.atomic.AtomicInteger;

/** Memory stays what it is over many calls and many objects. */
public final class MemoryTest {
    private static String roboto;

    private static long residentKilobytes() throws Exception {
        System.gc();
        for (String line : Files.readAllLines(Path.of("/proc/self/status")))
            if (line.startsWith("VmRSS:")) return Long.parseLong(line.replaceAll("[^0-9]", ""));
        throw new IllegalStateException("no VmRSS");
    }

    private static void flat(String what, long kilobytes, Check.Body warmUp, Check.Body body) throws Throwable {
        warmUp.run();
        long before = residentKilobytes();
        body.run();
        long grown = residentKilobytes() - before;
        System.out.println(what + " grew the process by " + grown + " KB");
        Check.that(grown < kilobytes, what + " grew the process by " + grown + " KB");
    }

    /** Each of the natives that borrow from the VM, some with arguments that fail. */
    private static void calls(int times) throws Throwable {
        TextView view = Texts.view(roboto, "Hamburg", 20, 100, 30);
        FakeLayout layout = new FakeLayout(new SpannableString("text with a span"));
        ((SpannableString) layout.getText()).setSpan(new BackgroundColorSpan(0xFF00FF00), 0, 4, 0);
        Paint paint = new Paint();
        paint.setFontFeatureSettings("liga");
        int[] colors = {1, 2};
        float[] numbers = {0, 1};
        byte[] bytes = new byte[64];
        try (QxText text = new QxText()) {
            text.setFontFile(roboto);
            for (int i = 0; i < times; ++i) {
                text.setPaint(paint);
                text.setView(view);
                text.setLayout(layout);
                text.addLinearGradient(0, 1, colors, numbers, numbers, 1);
                text.addLinearGradient(0, 1, colors, numbers, new float[1], 1);
                text.setFontFile(roboto);
                text.setFontData("no font", bytes);
                text.setFontFamilyName("any");
                text.getBitmapSize();
                text.getMargins();
            }
        }
    }

    /** Makes, draws and frees objects in four threads. */
    private static void objects(int count) throws Throwable {
        AtomicInteger left = new AtomicInteger(count);
        AtomicInteger drawn = new AtomicInteger();
        Thread[] threads = new Thread[4];
        for (int t = 0; t < threads.length; ++t) {
            threads[t] = new Thread(() -> {
                TextView view = Texts.view(roboto, "Ag", 12, 24, 16);
                while (left.getAndDecrement() > 0) {
                    try (QxText text = new QxText()) {
                        text.setFontFile(roboto);
                        text.capture(view);
                        text.addOuterShadow(135, 2, 2, 0xFF000000, 1);
                        if (text.render() != null) drawn.incrementAndGet();
                    }
                }
            });
            threads[t].start();
        }
        for (Thread thread : threads) thread.join();
        Check.equal(count, drawn.get(), "pictures");
    }

    private static void forgottenObjectsAreFreed() throws Throwable {
        int[] handles = new int[500];
        for (int i = 0; i < handles.length; ++i) handles[i] = Texts.handle(Texts.bound());
        int alive = handles.length;
        for (int i = 0; i < 200 && alive > 0; ++i) {
            System.gc();
            Thread.sleep(10);
            alive = 0;
            for (int handle : handles) if (Peek.exists(handle)) ++alive;
        }
        Check.equal(0, alive, "objects that nobody closed");
    }

    public static void main(String[] arguments) throws Throwable {
        QxLibrary.load(System.getProperty("qx.library"));
        roboto = Texts.font("Roboto-Regular.ttf");
        Check.test("a hundred thousand calls", () -> flat("100000 calls", 4096, () -> calls(1000), () -> calls(10000)));
        Check.test("ten thousand objects",
                () -> flat("10000 objects", 4096, () -> objects(2000), () -> objects(10000)));
        Check.test("forgotten objects are freed", MemoryTest::forgottenObjectsAreFreed);
        Check.finish();
    }
}
