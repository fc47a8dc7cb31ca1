#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

/// When a key was last written, in the system's unit: 100 ns since 1601, UTC.
[[nodiscard]] std::uint64_t KeyWriteTime(HKEY key);

/// That time as "2009/03/05 07:08:09", by a calendar of its own.
[[nodiscard]] std::string UtcText(std::uint64_t fileTime);

/// A key under HKEY_LOCAL_MACHINE with a subkey "Sub" that was last written at a chosen time. No call sets a
/// key's time; it comes from a hive file in the form in which Wine saves them.
class CLoadedHive {
public:
    explicit CLoadedHive(std::uint64_t fileTime);
    CLoadedHive(const CLoadedHive&) = delete;
    CLoadedHive& operator=(const CLoadedHive&) = delete;
    ~CLoadedHive();

    /// The path of "Sub".
    [[nodiscard]] static std::string SubkeyPath();
};
