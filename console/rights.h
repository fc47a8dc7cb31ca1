#pragma once

#include <initializer_list>

#include "console/terminal.h"

/// Checks that this process may do what a command needs, and enables the privileges; tells on standard error
/// what is missing.
/// @param privileges  their names, as in "SeBackupPrivilege".
[[nodiscard]] bool HasRights(CTerminal& terminal, std::initializer_list<const char*> privileges = {});
