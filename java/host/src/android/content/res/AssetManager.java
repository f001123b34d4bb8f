package android.content.res;

import java.nio.charset.StandardCharsets;
import qx.host.HostLibrary;

/** The files of one directory, which native code reads by their names. */
public final class AssetManager implements AutoCloseable {
    /** The native manager; native code reads it by this name. */
    private long mObject;

    public AssetManager(String directory) {
        mObject = HostLibrary.newAssetManager(directory.getBytes(StandardCharsets.UTF_8));
    }

    @Override
    public void close() {
        HostLibrary.deleteAssetManager(mObject);
        mObject = 0;
    }
}
