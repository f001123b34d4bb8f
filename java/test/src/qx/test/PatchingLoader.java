package qx.test;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.DataInputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.util.HashMap;
import java.util.HashSet;
import java.util.Map;
import java.util.Set;

/** Loads the classes of the class path anew, without some of them, and with some members under other names. */
final class PatchingLoader extends ClassLoader {
    private final Set<String> hidden = new HashSet<>();
    private final Map<String, String> renamed = new HashMap<>();

    PatchingLoader() {
        super(ClassLoader.getPlatformClassLoader());
    }

    PatchingLoader hide(String className) {
        hidden.add(className);
        return this;
    }

    /** Gives one member of a class a name under which nobody looks for it. */
    PatchingLoader rename(String className, String member) {
        renamed.put(className, member);
        return this;
    }

    @Override
    protected Class<?> findClass(String name) throws ClassNotFoundException {
        if (hidden.contains(name)) throw new ClassNotFoundException(name);
        try (InputStream file = getSystemResourceAsStream(name.replace('.', '/') + ".class")) {
            if (file == null) throw new ClassNotFoundException(name);
            byte[] bytes = file.readAllBytes();
            if (renamed.containsKey(name)) bytes = patch(bytes, renamed.get(name));
            return defineClass(name, bytes, 0, bytes.length);
        } catch (IOException e) {
            throw new ClassNotFoundException(name, e);
        }
    }

    /** Renames in the constant pool, which precedes everything else of a class file. */
    private static byte[] patch(byte[] bytes, String member) throws IOException {
        ByteArrayOutputStream patched = new ByteArrayOutputStream();
        DataInputStream in = new DataInputStream(new ByteArrayInputStream(bytes));
        DataOutputStream out = new DataOutputStream(patched);
        out.writeLong(in.readLong());
        int count = in.readUnsignedShort();
        out.writeShort(count);
        for (int i = 1; i < count; ++i) {
            int tag = in.readUnsignedByte();
            out.writeByte(tag);
            switch (tag) {
                case 1: {
                    String text = in.readUTF();
                    out.writeUTF(text.equals(member) ? text + "Renamed" : text);
                    break;
                }
                case 5:
                case 6:
                    out.write(in.readNBytes(8));
                    ++i;  // these take two places
                    break;
                case 15:
                    out.write(in.readNBytes(3));
                    break;
                case 7:
                case 8:
                case 16:
                    out.write(in.readNBytes(2));
                    break;
                default:
                    out.write(in.readNBytes(4));
            }
        }
        out.write(in.readAllBytes());
        return patched.toByteArray();
    }
}
