package com.zorvane.android.sdk.qxe.util;

import android.os.Build;

/**
 * Tells why a native call failed. Each thread has its own last error; a call that succeeds leaves it as it is, so ask
 * only after a failure, on the thread that made the call.
 */
public final class QxError {
    /** Nothing has failed on this thread. */
    public static final int NONE = 0;
    /** A system call failed or memory ran out. */
    public static final int SYSTEM = 1;
    /** Too many walks over one list at a time. */
    public static final int NO_CURSOR = 2;
    /** An index or a range lies outside. */
    public static final int OUT_OF_RANGE = 3;
    /** An object was made twice. */
    public static final int ALREADY_CONSTRUCTED = 4;
    /** An argument is missing or unusable; a picture that no array can hold, too. */
    public static final int INVALID_ARGUMENT = 7;
    /** A part of the object could not be made. */
    public static final int NOT_CONSTRUCTED = 8;
    /** An object or handle is not known. */
    public static final int UNKNOWN_HANDLE = 9;
    /** A file could not be opened. */
    public static final int FILE_NOT_OPENED = 11;
    /** The instance has no native text: it was closed. */
    public static final int NOT_BOUND = 19;

    private QxError() {}

    /** The last error of the calling thread, one of the constants of this class. */
    public static int last() {
        return Error_GetError();
    }

    /** Asked once by the library when it loads: verbose log lines are for engineering builds. */
    static boolean isBuildTypeEngMode() {
        return "eng".equals(Build.TYPE);
    }

    private static native int Error_GetError();
}
