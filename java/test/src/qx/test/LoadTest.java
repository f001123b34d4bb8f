package qx.test;

import java.lang.reflect.Constructor;
import java.lang.reflect.Field;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;

/**
 * What a load registers, and what it does when classes or methods are missing. Each case has the classes in a loader
 * of its own, and a copy of the library, of which there can be one a loader.
 */
public final class LoadTest {
    private static final String PACKAGE = "com.zorvane.android.sdk.qxe.";
    private static final String TEXT = PACKAGE + "QxText";
    private static final String FONTS = PACKAGE + "font.FontManager";
    private static final String ERROR = PACKAGE + "util.QxError";

    private static final List<String> ALL = List.of("D QxText_Common_JNI: QxText_JNI_OnLoad",
            "D QxError_JNI: Init .. Done", "D Init_QxFontManager_JNI: Init_QxFontManager_JNI", "D QxText_JNI: JNI_OnLoad .. Done",
            "D QxText_Common_JNI: QxText_JNI_OnLoad .... done");

    private static int copies;

    /** The classes of one loader with the library that they have loaded. */
    private static final class World {
        final ClassLoader loader;
        final String library;

        World(ClassLoader loader) throws Exception {
            this.loader = loader;
            Path copy = Path.of(System.getProperty("qx.test.log") + "." + copies++ + ".so");
            Files.deleteIfExists(copy);
            Files.copy(Path.of(System.getProperty("qx.library")), copy);
            copy.toFile().deleteOnExit();
            library = copy.toString();
        }

        void load() throws Throwable {
            callStatic(PACKAGE + "QxLibrary", "load", library);
        }

        Object newText() throws Throwable {
            Constructor<?> constructor = loader.loadClass(TEXT).getConstructor();
            return constructor.newInstance();
        }

        Object callStatic(String className, String name, Object... arguments) throws Throwable {
            return call(loader.loadClass(className), null, name, arguments);
        }

        Object call(Object instance, String name, Object... arguments) throws Throwable {
            return call(instance.getClass(), instance, name, arguments);
        }

        private static Object call(Class<?> owner, Object instance, String name, Object[] arguments) throws Throwable {
            for (Method method : owner.getDeclaredMethods()) {
                if (!method.getName().equals(name) || method.getParameterCount() != arguments.length) continue;
                method.setAccessible(true);
                try {
                    return method.invoke(instance, arguments);
                } catch (InvocationTargetException e) {
                    throw e.getCause();
                }
            }
            throw new NoSuchMethodException(name);
        }
    }

    /** The library's lines about loading, in order. */
    private static List<String> lines() {
        List<String> lines = Log.take();
        lines.removeIf(line -> !ALL.contains(line) && !line.contains("Load Fail!") && !line.contains("Onload Fail!"));
        return lines;
    }

    private static List<String> allBut(int index, String failure) {
        List<String> lines = new java.util.ArrayList<>(ALL);
        lines.set(index, "E QxText_Common_JNI: " + failure);
        return lines;
    }

    private static World loaded(PatchingLoader loader) throws Throwable {
        World world = new World(loader);
        Log.forget();
        world.load();
        return world;
    }

    private static void wholeClassesAreRegisteredInOrder() throws Throwable {
        World world = loaded(new PatchingLoader());
        Check.equal(ALL, lines(), "lines");
        // Two copies of the library live beside each other: each counts its own handles.
        World other = loaded(new PatchingLoader());
        for (World each : new World[] {world, other}) {
            Object text = each.newText();
            Check.equal(0, each.call(text, "addOuterGlow", 3f, 0xFF000000, 1f), "effect");
            Check.equal(36, ((int[]) each.call(text, "render")).length, "picture of the margins");
            Field handle = text.getClass().getDeclaredField("mHandle");
            handle.setAccessible(true);
            Check.equal(1, handle.getInt(text), "handle");
        }
    }

    private static void missingClassesLeaveTheOthers() throws Throwable {
        World world = loaded(new PatchingLoader().hide(ERROR));
        Check.equal(allBut(1, "QxError Onload Fail!"), lines(), "without QxError");
        Check.equal(0, world.call(world.newText(), "addOuterGlow", 3f, 0, 1f), "QxText works");
        Check.equal(false, world.callStatic(FONTS, "insertFontData", null, null), "FontManager works");

        world = loaded(new PatchingLoader().hide(FONTS));
        Check.equal(allBut(2, "QxFontManager OnLoad Fail!"), lines(), "without FontManager");
        Check.equal(0, world.call(world.newText(), "addOuterGlow", 3f, 0, 1f), "QxText works");

        world = loaded(new PatchingLoader().hide(TEXT));
        Check.equal(allBut(3, "QxText OnLoad Fail!"), lines(), "without QxText");
        Check.equal(0, world.callStatic(ERROR, "last"), "QxError works");
    }

    private static void missingNativesEndTheirTable() throws Throwable {
        World world = loaded(new PatchingLoader().rename(TEXT, "QxText_SetFont2"));
        Check.equal(allBut(3, "QxText OnLoad Fail!"), lines(), "without one native of QxText");
        Object text = world.newText();
        Check.equal(false, world.call(text, "setFontFile", (Object) null), "natives before it are registered");
        World broken = world;
        Check.throwsA(UnsatisfiedLinkError.class, () -> broken.call(text, "setLineLimit", 1), "natives behind it");

        loaded(new PatchingLoader().rename(FONTS, "QxFontManager_InsertFontData"));
        Check.equal(allBut(2, "QxFontManager OnLoad Fail!"), lines(), "without a native of FontManager");
        loaded(new PatchingLoader().rename(ERROR, "Error_GetError"));
        Check.equal(allBut(1, "QxError Onload Fail!"), lines(), "without the native of QxError");
    }

    private static void theBuildTypeIsAskedFor() throws Throwable {
        loaded(new PatchingLoader().rename(ERROR, "isBuildTypeEngMode"));
        Check.equal(allBut(1, "QxError Onload Fail!"), lines(), "without the question");

        // The question throws where the platform has no such class. Natives survive the load that throws.
        World world = new World(new PatchingLoader().hide("android.os.Build"));
        Log.forget();
        Check.throwsA(NoClassDefFoundError.class, world::load, "a question that throws");
        Check.equal(allBut(1, "QxError Onload Fail!"), lines(), "a question that throws");
        Check.equal(0, world.call(world.newText(), "addOuterGlow", 3f, 0, 1f), "QxText works");
        Check.throwsA(NoClassDefFoundError.class, world::load, "the second try");
        Check.equal(0, world.call(world.newText(), "addOuterGlow", 3f, 0, 1f), "and still works");
    }

    private static void missingFieldsAndMethodsOfOtherClasses() throws Throwable {
        World world = loaded(new PatchingLoader().rename(TEXT, "mHandle"));
        Log.forget();
        Check.equal(-1, world.call(world.newText(), "addOuterGlow", 3f, 0, 1f), "without the field");
        Check.equal(List.of("E QxText_JNI: @ Native Error 19 : 257"), Log.take("E QxText_JNI"), "message");
        Check.equal(19, world.callStatic(ERROR, "last"), "error");

        world = loaded(new PatchingLoader().rename("android.graphics.Paint", "isFakeBoldText"));
        Object paint = world.loader.loadClass("android.graphics.Paint").getConstructor().newInstance();
        Log.forget();
        Check.equal(false, world.call(world.newText(), "setPaint", paint), "a paint without a method");
        Check.equal(List.of("E QxText_JNI: Java function isFakeBoldText not found"), Log.take("E QxText_JNI"),
                "message");

        world = loaded(new PatchingLoader().hide("android.text.SpannableString"));
        Constructor<?> layout =
                world.loader.loadClass("qx.test.FakeLayout").getDeclaredConstructor(CharSequence.class);
        layout.setAccessible(true);
        Check.equal(true, world.call(world.newText(), "setLayout", layout.newInstance("text")),
                "a platform without spans");
    }

    public static void main(String[] arguments) {
        Check.test("whole classes are registered in order", LoadTest::wholeClassesAreRegisteredInOrder);
        Check.test("missing classes leave the others", LoadTest::missingClassesLeaveTheOthers);
        Check.test("missing natives end their table", LoadTest::missingNativesEndTheirTable);
        Check.test("the build type is asked for", LoadTest::theBuildTypeIsAskedFor);
        Check.test("missing fields and methods of other classes", LoadTest::missingFieldsAndMethodsOfOtherClasses);
        Check.finish();
    }
}
