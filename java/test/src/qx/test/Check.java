package qx.test;

import java.lang.reflect.Array;
import java.util.Objects;

/** Runs the tests of one program and counts what fails. */
final class Check {
    interface Body {
        void run() throws Throwable;
    }

    private static int checks;
    private static int failures;
    private static String current = "";

    private Check() {}

    static void test(String name, Body body) {
        current = name;
        try {
            body.run();
        } catch (Throwable thrown) {
            fail("threw " + thrown);
            thrown.printStackTrace(System.out);
        }
    }

    static synchronized void fail(String what) {
        ++failures;
        System.out.println("FAILED " + current + ": " + what);
    }

    static synchronized void that(boolean holds, String what) {
        ++checks;
        if (!holds) fail(what);
    }

    /** Compares values, and arrays by their elements. */
    static void equal(Object wanted, Object got, String what) {
        that(Objects.deepEquals(wanted, got), what + ": wanted " + text(wanted) + ", got " + text(got));
    }

    /** Runs a body that must throw exactly this. */
    static void throwsThis(Throwable wanted, Body body, String what) {
        Throwable got = null;
        try {
            body.run();
        } catch (Throwable thrown) {
            got = thrown;
        }
        that(got == wanted, what + ": wanted " + wanted + ", got " + got);
    }

    static void throwsA(Class<? extends Throwable> wanted, Body body, String what) {
        Throwable got = null;
        try {
            body.run();
        } catch (Throwable thrown) {
            got = thrown;
        }
        that(wanted.isInstance(got), what + ": wanted " + wanted + ", got " + got);
    }

    /** Ends the program. */
    static void finish() {
        System.out.println(checks + " checks, " + failures + " failed");
        System.exit(failures == 0 && checks > 0 ? 0 : 1);
    }

    private static String text(Object value) {
        if (value == null || !value.getClass().isArray()) return String.valueOf(value);
        StringBuilder text = new StringBuilder("[");
        int length = Array.getLength(value);
        for (int i = 0; i < length && i < 60; ++i) text.append(i == 0 ? "" : ", ").append(Array.get(value, i));
        return text.append(length > 60 ? ", ...]" : "]").toString();
    }
}
