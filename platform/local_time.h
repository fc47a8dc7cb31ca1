#pragma once

#include <string>

/// The local time as a name for a file, as in "2009.05.14.16.03.27": year, month, day, hour (0 to 23), minute
/// and second.
/// @return an empty text when the system cannot tell the time.
[[nodiscard]] std::string LocalTimeName();
