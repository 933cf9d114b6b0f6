#pragma once

#include <string>
#include <string_view>

#include "simulator/data/JsonNode.h"
#include "simulator/mailbox.h"

namespace simulator {

/// Reads a mailbox from the JSON text of a mailbox file; docs/mailbox.md describes the format.
/// `fileName` is what errors call the file. Raises InputError.
Mailbox readMailbox(std::string_view json, std::string_view fileName);

/// The same from a file; raises InputError also when the file can't be read.
Mailbox readMailboxFile(const std::string& path);

}  // namespace simulator
