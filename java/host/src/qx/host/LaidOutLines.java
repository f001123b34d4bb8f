package qx.host;

/** Lines as the native layout returns them: nine numbers a line. */
public final class LaidOutLines {
    private static final int NUMBERS = 9;

    private final int[] numbers;

    LaidOutLines(int[] numbers) {
        this.numbers = numbers;
    }

    private int number(int line, int index) {
        if (line < 0 || line >= count()) throw new IndexOutOfBoundsException("line " + line + " of " + count());
        return numbers[line * NUMBERS + index];
    }

    public int count() {
        return numbers.length / NUMBERS;
    }

    public int start(int line) {
        return number(line, 0);
    }

    public int end(int line) {
        return number(line, 1);
    }

    public int visibleEnd(int line) {
        return number(line, 2);
    }

    public float left(int line) {
        return Float.intBitsToFloat(number(line, 3));
    }

    public float width(int line) {
        return Float.intBitsToFloat(number(line, 4));
    }

    public int top(int line) {
        return number(line, 5);
    }

    public int baseline(int line) {
        return number(line, 6);
    }

    public int bottom(int line) {
        return number(line, 7);
    }

    public boolean rightToLeft(int line) {
        return number(line, 8) != 0;
    }
}
