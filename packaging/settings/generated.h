#pragma once

#include <map>
#include <string>

namespace packaging {

/// Bytes by path below the project's folder.
using Files = std::map<std::string, std::string>;

/// Everything that is made from the table of settings (resources/settings.h): group policy's
/// templates, classic and XML, in English and German; sample files for the registry editor; the
/// document on settings.
Files generatedFiles();

}  // namespace packaging
