package qx.demo;

import com.zorvane.android.sdk.qxe.QxText;
import java.util.HashMap;
import java.util.Map;

/** An effect in words, "stroke width=4 color=#102030 opacity=1 position=outside"; every parameter has to be given. */
final class Effect {
    private final String name;
    private final Map<String, String> values = new HashMap<>();

    Effect(String words) {
        String[] parts = words.trim().split(" +");
        name = parts[0];
        for (int i = 1; i < parts.length; ++i) {
            int equals = parts[i].indexOf('=');
            if (equals < 0) throw new IllegalArgumentException("'" + parts[i] + "' is not name=value");
            values.put(parts[i].substring(0, equals), parts[i].substring(equals + 1));
        }
    }

    void addTo(QxText text) {
        if (add(text) < 0) throw new IllegalArgumentException("cannot add " + name);
    }

    private int add(QxText text) {
        switch (name) {
            case "outer-shadow":
                return text.addOuterShadow(number("angle"), number("distance"), number("size"), color(),
                        number("opacity"));
            case "inner-shadow":
                return text.addInnerShadow(number("angle"), number("distance"), number("size"), color(),
                        number("opacity"));
            case "outer-glow":
                return text.addOuterGlow(number("size"), color(), number("opacity"));
            case "stroke":
                return text.addStroke(number("width"), color(), number("opacity"), position());
            case "linear-gradient":
                return addGradient(text);
            default:
                throw new IllegalArgumentException("the Java interface has no effect '" + name + "'");
        }
    }

    private int addGradient(QxText text) {
        String[] stops = word("stops").split(",");
        int[] colors = new int[stops.length];
        float[] alphas = new float[stops.length];
        float[] positions = new float[stops.length];
        for (int i = 0; i < stops.length; ++i) {
            String[] stop = stops[i].split("@");
            colors[i] = parseColor(stop[0]);
            alphas[i] = 1;
            positions[i] = Float.parseFloat(stop[1]);
        }
        return text.addLinearGradient(number("angle"), number("scale"), colors, alphas, positions, number("opacity"));
    }

    private String word(String parameter) {
        String value = values.get(parameter);
        if (value == null) throw new IllegalArgumentException(name + " needs " + parameter);
        return value;
    }

    private float number(String parameter) {
        return Float.parseFloat(word(parameter));
    }

    private int color() {
        return parseColor(word("color"));
    }

    private int position() {
        switch (word("position")) {
            case "center": return QxText.STROKE_CENTER;
            case "outside": return QxText.STROKE_OUTSIDE;
            case "inside": return QxText.STROKE_INSIDE;
            default: throw new IllegalArgumentException("no such position");
        }
    }

    /** Opaque colours, "#rrggbb". */
    static int parseColor(String text) {
        if (!text.matches("#[0-9a-fA-F]{6}")) throw new IllegalArgumentException("'" + text + "' is not #rrggbb");
        return 0xFF000000 | Integer.parseInt(text.substring(1), 16);
    }
}
