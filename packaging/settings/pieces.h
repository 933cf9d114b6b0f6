#pragma once

#include <string>

#include "packaging/settings/generated.h"
#include "resources/settings.h"

/// What the writers of generated files share. All texts here are UTF-8.
namespace packaging {

enum class Language { English, German };

std::string text(const resources::BilingualText& text, Language language);

/// "HKEY_CURRENT_USER" and so on.
std::string rootName(platform::RegistryRoot root);
/// The key as it is in Outlook.
std::string keyOf(const resources::Setting& setting);
std::string nameOf(const resources::Setting& setting);

/// With the line ends of Windows; the lines given end in a line feed.
std::string windowsLines(const std::string& lines);

/// velnor.adm and velnor-de.adm for the editors of Windows 2000 to XP, velnor.admx with its texts
/// for those from Vista on.
void addPolicies(Files& files);
/// settings.md and the samples.
void addDocuments(Files& files);

}  // namespace packaging
