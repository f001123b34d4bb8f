package qx.test;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/** The library's log lines. They go to standard error, which the tests' runner writes to a file. */
final class Log {
    private static final Path FILE = Path.of(System.getProperty("qx.test.log"));

    private static int seen;

    private Log() {}

    /** The lines since the last call, as "E QxText_JNI: message" with the priority's letter in front. */
    static synchronized List<String> take() {
        try {
            byte[] all = Files.readAllBytes(FILE);
            String fresh = new String(all, seen, all.length - seen, StandardCharsets.UTF_8);
            seen = all.length;
            return new ArrayList<>(List.of(fresh.split("\n")));
        } catch (IOException e) {
            throw new IllegalStateException(e);
        }
    }

    /** The lines of one tag since the last call; of one priority if the tag has its letter in front. */
    static List<String> take(String tag) {
        List<String> lines = take();
        lines.removeIf(line -> !line.startsWith(tag + ": ", tag.charAt(1) == ' ' ? 0 : 2));
        return lines;
    }

    static void forget() {
        take();
    }
}
