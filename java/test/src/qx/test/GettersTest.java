package qx.test;

import android.graphics.Paint;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;

/** Getters of the application that throw: the exception arrives, and nothing has changed. */
public final class GettersTest {
    private static final RuntimeException THROWN = new IllegalStateException("the application's own");

    private static void aPaintThrows() throws Throwable {
        Paint thrower = new Paint() {
            @Override
            public String getFontFeatureSettings() {
                throw THROWN;
            }
        };
        try (QxText text = new QxText()) {
            text.setPaint(Texts.paint(33));
            Check.throwsThis(THROWN, () -> text.setPaint(thrower), "paint");
            Check.equal(33f, Peek.paint(Texts.handle(text))[0], "size of before");
        }
    }

    private static void aViewThrows() throws Throwable {
        TextView thrower = new TextView() {
            @Override
            public int getMaxLines() {
                throw THROWN;
            }
        };
        thrower.setGravity(0x55);
        try (QxText text = Texts.bound()) {
            int[] before = Peek.view(Texts.handle(text));
            Check.throwsThis(THROWN, () -> text.setView(thrower), "view");
            Check.equal(before, Peek.view(Texts.handle(text)), "view of before");
        }
    }

    private static void aLayoutThrows() throws Throwable {
        try (QxText text = Texts.bound()) {
            text.setLineLimit(3);
            text.setLayout(new FakeLayout("before"));
            int handle = Texts.handle(text);
            int[] lines = Peek.lines(handle);
            FakeLayout thrower = new FakeLayout("after");
            String[] asked = {"getLineCount", "getLineBaseline", "getLineAscent", "getLineDescent", "getLineStart",
                "getLineVisibleEnd", "getLineLeft", "getLineWidth"};
            for (String which : asked) {
                thrower.asked = (method, line) -> {
                    if (method.equals(which) && line == (which.equals("getLineCount") ? 0 : 2)) throw THROWN;
                };
                Check.throwsThis(THROWN, () -> text.setLayout(thrower), which);
                Check.equal(lines, Peek.lines(handle), which + ": lines of before");
                Check.equal((int) 'b', Peek.text(handle)[0], which + ": text of before");
            }
            Check.equal(true, text.setLayout(new FakeLayout(new StringBuilder("x"))), "any character sequence will do");
        }
    }

    private static void aTextThrows() throws Throwable {
        CharSequence thrower = new CharSequence() {
            @Override
            public int length() {
                return 1;
            }

            @Override
            public char charAt(int index) {
                return 'x';
            }

            @Override
            public CharSequence subSequence(int start, int end) {
                return this;
            }

            @Override
            public String toString() {
                throw THROWN;
            }
        };
        try (QxText text = Texts.bound()) {
            Check.throwsThis(THROWN, () -> text.setLayout(new FakeLayout(thrower)), "text");
            Check.equal(null, Peek.text(Texts.handle(text)), "no text");
        }
    }

    private static void missingMethodsAreSwallowed() throws Throwable {
        // A class that was compiled against another version of itself throws this from within.
        Paint stale = new Paint() {
            @Override
            public float getTextSize() {
                throw new NoSuchMethodError("stale");
            }
        };
        try (QxText text = new QxText()) {
            Check.equal(false, text.setPaint(stale), "a stale paint");
            Check.equal(true, text.setPaint(new Paint()), "the next one");
        }
    }

    public static void main(String[] arguments) {
        QxLibrary.load(System.getProperty("qx.library"));
        Check.test("a paint throws", GettersTest::aPaintThrows);
        Check.test("a view throws", GettersTest::aViewThrows);
        Check.test("a layout throws", GettersTest::aLayoutThrows);
        Check.test("a text throws", GettersTest::aTextThrows);
        Check.test("missing methods are swallowed", GettersTest::missingMethodsAreSwallowed);
        Check.finish();
    }
}
