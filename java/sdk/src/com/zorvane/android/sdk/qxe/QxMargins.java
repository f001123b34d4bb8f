package com.zorvane.android.sdk.qxe;

/** Pixels that effects paint beyond the edges of the view. */
public final class QxMargins {
    public final int left;
    public final int top;
    public final int right;
    public final int bottom;

    QxMargins(int left, int top, int right, int bottom) {
        this.left = left;
        this.top = top;
        this.right = right;
        this.bottom = bottom;
    }

    @Override
    public String toString() {
        return "margins " + left + ", " + top + ", " + right + ", " + bottom;
    }
}
