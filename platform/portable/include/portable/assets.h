#pragma once

#include <string>

#include "android/asset_manager.h"

/// Host-only side of the asset interface: the library never includes this.
namespace portable {

/// A manager over the files of a directory, to be given back to `deleteAssetManager`. The directory need not exist;
/// every open fails then.
AAssetManager* newAssetManager(const std::string& directory);
void deleteAssetManager(AAssetManager* manager);

/// Directory of the managers made by `newDefaultAssetManager` from now on; the current directory until set.
void setAssetDirectory(const std::string& directory);
AAssetManager* newDefaultAssetManager();

}  // namespace portable
