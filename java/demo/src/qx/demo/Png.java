package qx.demo;

import java.io.ByteArrayOutputStream;
import java.io.DataInputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.zip.CRC32;
import java.util.zip.Deflater;
import java.util.zip.DeflaterOutputStream;
import java.util.zip.InflaterInputStream;

/** Pictures of 8-bit red, green, blue and alpha, as they are in memory: no colour management, no rounding. */
final class Png {
    private static final long SIGNATURE = 0x89504E470D0A1A0AL;
    private static final int TRUE_COLOR_WITH_ALPHA = 6;

    final int width;
    final int height;
    /** Row by row, 0xAARRGGBB. */
    final int[] pixels;

    Png(int width, int height, int[] pixels) {
        this.width = width;
        this.height = height;
        this.pixels = pixels;
    }

    void write(Path file) throws IOException {
        ByteArrayOutputStream rows = new ByteArrayOutputStream();
        Deflater deflater = new Deflater();
        try (DeflaterOutputStream compressed = new DeflaterOutputStream(rows, deflater)) {
            for (int i = 0; i < pixels.length; ++i) {
                if (i % width == 0) compressed.write(0);  // rows are not filtered
                int p = pixels[i];
                compressed.write(new byte[] {(byte) (p >> 16), (byte) (p >> 8), (byte) p, (byte) (p >> 24)});
            }
        }
        deflater.end();
        ByteArrayOutputStream header = new ByteArrayOutputStream();
        DataOutputStream fields = new DataOutputStream(header);
        fields.writeInt(width);
        fields.writeInt(height);
        fields.write(new byte[] {8, TRUE_COLOR_WITH_ALPHA, 0, 0, 0});
        try (DataOutputStream out = new DataOutputStream(Files.newOutputStream(file))) {
            out.writeLong(SIGNATURE);
            writeChunk(out, "IHDR", header.toByteArray());
            writeChunk(out, "IDAT", rows.toByteArray());
            writeChunk(out, "IEND", new byte[0]);
        }
    }

    private static void writeChunk(DataOutputStream out, String type, byte[] data) throws IOException {
        CRC32 crc = new CRC32();
        crc.update(type.getBytes());
        crc.update(data);
        out.writeInt(data.length);
        out.writeBytes(type);
        out.write(data);
        out.writeInt((int) crc.getValue());
    }

    static Png read(Path file) throws IOException {
        int width = 0;
        int height = 0;
        ByteArrayOutputStream rows = new ByteArrayOutputStream();
        try (DataInputStream in = new DataInputStream(Files.newInputStream(file))) {
            if (in.readLong() != SIGNATURE) throw new IOException(file + " is no PNG");
            for (String type = ""; !type.equals("IEND");) {
                int length = in.readInt();
                type = new String(in.readNBytes(4));
                byte[] data = in.readNBytes(length);
                in.readInt();
                if (type.equals("IDAT")) rows.write(data);
                if (!type.equals("IHDR")) continue;
                DataInputStream fields = new DataInputStream(new java.io.ByteArrayInputStream(data));
                width = fields.readInt();
                height = fields.readInt();
                if (data[8] != 8 || data[9] != TRUE_COLOR_WITH_ALPHA || data[12] != 0)
                    throw new IOException(file + " has another pixel format");
            }
        }
        byte[] bytes = new InflaterInputStream(new java.io.ByteArrayInputStream(rows.toByteArray())).readAllBytes();
        return new Png(width, height, unfiltered(bytes, width, height));
    }

    private static int[] unfiltered(byte[] bytes, int width, int height) throws IOException {
        int stride = 4 * width + 1;
        if (bytes.length != stride * height) throw new IOException("rows are missing");
        int[] pixels = new int[width * height];
        for (int y = 0; y < height; ++y) {
            int row = y * stride + 1;
            for (int x = 0; x < 4 * width; ++x) {
                int left = x < 4 ? 0 : bytes[row + x - 4] & 255;
                int above = y == 0 ? 0 : bytes[row + x - stride] & 255;
                int corner = x < 4 || y == 0 ? 0 : bytes[row + x - stride - 4] & 255;
                bytes[row + x] += (byte) predicted(bytes[row - 1], left, above, corner);
            }
            for (int x = 0; x < width; ++x) {
                int at = row + 4 * x;
                pixels[y * width + x] = (bytes[at + 3] & 255) << 24 | (bytes[at] & 255) << 16
                        | (bytes[at + 1] & 255) << 8 | bytes[at + 2] & 255;
            }
        }
        return pixels;
    }

    private static int predicted(int filter, int left, int above, int corner) throws IOException {
        switch (filter) {
            case 0: return 0;
            case 1: return left;
            case 2: return above;
            case 3: return (left + above) / 2;
            case 4: {
                int toLeft = Math.abs(above - corner);
                int toAbove = Math.abs(left - corner);
                int toCorner = Math.abs(left + above - 2 * corner);
                return toLeft <= toAbove && toLeft <= toCorner ? left : toAbove <= toCorner ? above : corner;
            }
            default: throw new IOException("unknown filter " + filter);
        }
    }
}
