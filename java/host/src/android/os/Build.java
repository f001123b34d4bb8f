package android.os;

/** What kind of system this is. */
public class Build {
    /** "user" on devices that are sold, "eng" on engineering ones. The property {@code qx.host.build} overrides it. */
    public static final String TYPE = System.getProperty("qx.host.build", "user");

    private Build() {}
}
