package qx.test;

import android.graphics.Paint;
import android.graphics.Typeface;
import android.text.FontConfig;
import android.text.SpannableString;
import android.text.style.BackgroundColorSpan;
import android.widget.TextView;

/** Arguments for natives that are called from C++. Each has something for every method that the natives look up. */
final class Samples {
    private Samples() {}

    static Object paint() {
        Paint paint = new Paint();
        paint.setTextSize(33);
        paint.setFontFeatureSettings("liga");
        return paint;
    }

    static Object view() {
        TextView view = new TextView();
        view.setGravity(0x13);
        view.setTypeface(Typeface.create(null, Typeface.BOLD | Typeface.ITALIC));
        view.setMaxLines(3);
        return view;
    }

    static Object layout() {
        SpannableString text = new SpannableString("text");
        text.setSpan(new BackgroundColorSpan(0xFF00FF00), 0, 4, 0);
        return new FakeLayout(text);
    }

    /** A default family and a fallback. */
    static Object fontConfig(String fontPath) {
        FontConfig.Font font = new FontConfig.Font(fontPath, 0, 400, false, null);
        FontConfig.Font fallback = new FontConfig.Font(fontPath, 0, 400, false, "serif");
        FontConfig.Font[] fonts = {font, fallback};
        return new FontConfig(new FontConfig.Family[] {new FontConfig.Family("sans-serif", fonts, null, 0),
            new FontConfig.Family(null, fonts, "ja", 0)});
    }
}
