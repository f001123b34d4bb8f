#pragma once

#include <sys/types.h>

#include <cstddef>

/// Read-only files that travel with an application. On the desktop they are the files of one directory.
extern "C" {

struct AAssetManager;
struct AAsset;

/// How a caller means to read; every mode but an unknown number reads the same here.
enum {
    AASSET_MODE_UNKNOWN = 0,
    AASSET_MODE_RANDOM = 1,
    AASSET_MODE_STREAMING = 2,
    AASSET_MODE_BUFFER = 3,
};

/// Opens an asset by its path below the asset directory, '/' between folders. Null when there is no such file,
/// when the path leads out of the directory, and for AASSET_MODE_UNKNOWN. Close it with AAsset_close.
AAsset* AAssetManager_open(AAssetManager* manager, const char* filename, int mode);

/// Length of the whole asset in bytes.
off_t AAsset_getLength(AAsset* asset);

/// Reads on from where the last read ended.
///
/// @return bytes read, 0 at the end, negative on error.
int AAsset_read(AAsset* asset, void* buffer, size_t count);

void AAsset_close(AAsset* asset);

}  // extern "C"
