package com.zorvane.android.sdk.qxe;

import android.content.res.AssetManager;
import android.graphics.Paint;
import android.text.Layout;
import android.widget.TextView;

/**
 * One decorated text: captures what the platform has laid out, takes effects, and draws both into pixels.
 *
 * <pre>{@code
 * QxLibrary.load();
 * try (QxText text = new QxText()) {
 *     text.setFontFile("/path/to/Roboto-Bold.ttf");
 *     text.capture(textView);
 *     text.addOuterShadow(135, 8, 12, 0xFF000000, 0.6f);
 *     text.addStroke(3, 0xFFFFFFFF, 1, QxText.STROKE_OUTSIDE);
 *     int[] pixels = text.render();
 *     int[] size = text.getBitmapSize();
 *     bitmap = Bitmap.createBitmap(pixels, size[0], size[1], Bitmap.Config.ARGB_8888);
 * }
 * }</pre>
 *
 * <p>The native text is made by the first call and freed by {@link #close()}, or by the finaliser of an instance that
 * was not closed. A closed instance stays closed: its methods fail with
 * {@link com.zorvane.android.sdk.qxe.util.QxError#NOT_BOUND}. One instance is used by one thread at a time.
 *
 * <p>There is at most one effect of a kind; adding another of the kind changes the one that is there and returns its
 * id. Colours are 0xAARRGGBB; the alpha of an effect's colour is replaced by its opacity. Angles are degrees, 0 to the
 * right and 90 upward; lengths are pixels, limited to 0..100 and rounded to whole ones; opacities are 0..1. An adder
 * returns -1 when it fails.
 *
 * <p>Effects are put together in one of two ways. Usually each is painted straight onto the picture. With a centred
 * stroke they go through a layer of their own, which keeps what lies inside the letters within them. An empty stroke,
 * {@code addStroke(0, 0, 0, STROKE_CENTER)}, paints nothing and chooses that way for the other effects. A whole text is
 * faded by the alpha of its colour.
 */
public final class QxText implements AutoCloseable {
    /** The band of a stroke lies on the outline, half on either side. */
    public static final int STROKE_CENTER = 0;
    /** The band lies around the letters. */
    public static final int STROKE_OUTSIDE = 1;
    /**
     * The band lies inside the letters, and the rest of the text's box is painted too: only the layer of a centred
     * stroke would keep it within the letters, and a text has one stroke.
     */
    public static final int STROKE_INSIDE = 2;

    /** A handle that no text ever has, for instances that were closed before they had one. */
    private static final int CLOSED = 0;

    /** Handle of the native text, negative before the first call; the library reads and writes it by this name. */
    private int mHandle = -1;

    /** Makes an instance without a native text, which costs nothing. */
    public QxText() {}

    /** Frees the native text. Closing again does nothing. */
    @Override
    public void close() {
        if (mHandle > CLOSED) QxText_finalize();
        mHandle = CLOSED;
    }

    @Override
    @SuppressWarnings({"deprecation", "removal"})
    protected void finalize() throws Throwable {
        try {
            close();
        } finally {
            super.finalize();
        }
    }

    // What to draw.

    /**
     * Captures everything of a laid out view: its paint, its geometry and its lines.
     *
     * @return false if one of the captures fails, also for a view that has not been laid out.
     */
    public boolean capture(TextView view) {
        return setPaint(view.getPaint()) && setView(view) && setLayout(view.getLayout());
    }

    /**
     * Copies size, scale, skew, spacing, flags, features, languages and alignment of a paint, not its colour.
     *
     * @return false for null. An exception of the paint's own methods is passed on.
     */
    public boolean setPaint(Paint paint) {
        return QxText_SetPaint(paint);
    }

    /**
     * Copies size, padding, gravity, line limit, text colour and style of a view.
     *
     * @return false for null. An exception of the view's own methods is passed on.
     */
    public boolean setView(TextView view) {
        return QxText_SetView(view);
    }

    /**
     * Limits the lines that the next {@link #setLayout} captures; overrides the view's own limit, even a smaller one.
     *
     * @param count below 1 for no limit of its own.
     */
    public boolean setLineLimit(int count) {
        return QxText_SetLine(count);
    }

    /**
     * Copies the text and its visible lines. Call it after {@link #setView}, whose size, padding, gravity and limits
     * decide which lines are visible and where they stand, and again before every {@link #render()} if lines have a
     * background colour.
     *
     * @return false for null. An exception of the layout's own methods is passed on, and nothing is changed then.
     */
    public boolean setLayout(Layout layout) {
        return QxText_SetLayout(layout);
    }

    // With which font.

    /**
     * Draws with a font file, or with a font that was registered under this name. What the font lacks is taken from
     * the system's fonts.
     *
     * @return false for null and for a file that is no font; the font then stays what it was.
     */
    public boolean setFontFile(String path) {
        return QxText_SetFont(path);
    }

    /**
     * Draws with a font from memory, which is registered under the name for the whole process.
     *
     * @param font the bytes of a font file; copied. Not read if the name is registered already.
     * @return false for null and for bytes that are no font.
     */
    public boolean setFontData(String name, byte[] font) {
        return QxText_SetFont2(name, font);
    }

    /**
     * Draws with a font of the application's assets, which is registered under its name for the whole process.
     *
     * @return false for null, for an asset that is not there, and for one that is no font.
     */
    public boolean setFontAsset(AssetManager assets, String name) {
        return QxText_SetFont3(assets, name);
    }

    /** Names the family that the text wishes for; it decides about a few weights only. */
    public boolean setFontFamilyName(String name) {
        return QxText_SetFontFamilyName(name);
    }

    // With which effects.

    /**
     * Adds a shadow behind the letters.
     *
     * @param angle where the light is; the shadow falls opposite.
     * @param distance how far the shadow is shifted.
     * @param size radius of its blur.
     * @return the effect's id.
     */
    public int addOuterShadow(float angle, float distance, float size, int color, float opacity) {
        return QxText_AddOuterShadowTextEffect(angle, distance, size, color, opacity);
    }

    /** Adds a shadow on the letters, as if they were cut out; the parameters are those of the outer one. */
    public int addInnerShadow(float angle, float distance, float size, int color, float opacity) {
        return QxText_AddInnerShadowTextEffect(angle, distance, size, color, opacity);
    }

    /**
     * Adds a halo around the letters.
     *
     * @param size how far it reaches.
     * @return the effect's id.
     */
    public int addOuterGlow(float size, int color, float opacity) {
        return QxText_AddOuterGlowTextEffect(size, color, opacity);
    }

    /**
     * Adds a band along the outlines.
     *
     * @param size its width.
     * @param position {@link #STROKE_CENTER}, {@link #STROKE_OUTSIDE} or {@link #STROKE_INSIDE}.
     * @return the effect's id.
     */
    public int addStroke(float size, int color, float opacity, int position) {
        return QxText_AddStrokeTextEffect(size, color, opacity, 0, position);
    }

    /**
     * Fills the letters with colours along a direction.
     *
     * @param angle direction, whole degrees.
     * @param scale length, 1 spans the text.
     * @param colors colour of each stop.
     * @param alphas alpha of each stop, 0..1.
     * @param positions place of each stop, 0..1, in hundredths.
     * @return the effect's id; -1 if an array is missing or their lengths differ.
     */
    public int addLinearGradient(float angle, float scale, int[] colors, float[] alphas, float[] positions,
            float opacity) {
        return QxText_AddLinearGradientTextEffect(angle, scale, colors, alphas, positions, opacity);
    }

    /** Takes all effects away; ids start again at 0. */
    public void clearEffects() {
        QxText_ClearAllTextEffect();
    }

    // And the picture.

    /**
     * Draws. The picture is as large as the view with the margins of the effects, see {@link #getBitmapSize()}, and
     * shows the view at {@link #getMargins()} left and top.
     *
     * @return the pixels row by row, 0xAARRGGBB and not premultiplied, as {@code android.graphics.Bitmap} wants them;
     *     null if there is no memory for them or no array could hold them.
     */
    public int[] render() {
        return QxText_RenderTextEffect();
    }

    /** Width and height of the last picture; null if it fails. */
    public int[] getBitmapSize() {
        return QxText_GetDrawingBitmapSize();
    }

    /** How far the effects paint beyond the view. */
    public QxMargins getMargins() {
        return new QxMargins(QxText_GetEffectLeftOffset(), QxText_GetEffectTopOffset(), QxText_GetEffectRightOffset(),
                QxText_GetEffectBottomOffset());
    }

    private native void QxText_finalize();

    private native int QxText_AddInnerShadowTextEffect(
            float angle, float distance, float size, int color, float opacity);

    private native int QxText_AddLinearGradientTextEffect(
            float angle, float scale, int[] colors, float[] alphas, float[] positions, float opacity);

    private native int QxText_AddOuterGlowTextEffect(float size, int color, float opacity);

    private native int QxText_AddOuterShadowTextEffect(
            float angle, float distance, float size, int color, float opacity);

    private native int QxText_AddStrokeTextEffect(float size, int color, float opacity, int mode, int position);

    private native void QxText_ClearAllTextEffect();

    private native int[] QxText_RenderTextEffect();

    private native boolean QxText_SetFont(String path);

    private native boolean QxText_SetFont2(String name, byte[] data);

    private native boolean QxText_SetFont3(AssetManager assets, String name);

    private native boolean QxText_SetPaint(Paint paint);

    private native boolean QxText_SetLayout(Layout layout);

    private native boolean QxText_SetLine(int count);

    private native boolean QxText_SetView(TextView view);

    private native int[] QxText_GetDrawingBitmapSize();

    private native int QxText_GetEffectLeftOffset();

    private native int QxText_GetEffectTopOffset();

    private native int QxText_GetEffectRightOffset();

    private native int QxText_GetEffectBottomOffset();

    private native boolean QxText_SetFontFamilyName(String name);
}
