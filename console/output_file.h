#pragma once

#include <string>
#include <string_view>

#include "platform/owners.h"

/// A file that takes the place of its former self only when all of it has been written: until then it grows
/// beside it, with ".partial" behind its name.
class COutputFile {
public:
    COutputFile() = default;
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;
    /// Deletes what was not wholly written.
    ~COutputFile();

    /// @return whether the file can be written, and takes the place of what is there.
    [[nodiscard]] bool Open(const std::string& path);
    enum class End {
        InPlace,
        Beside,   // whole, but its place is not to be had: it stays beside it, see PartialPath
        Deleted,  // it could not be written wholly
    };
    /// Writes the whole text and puts the file in its place.
    [[nodiscard]] End Finish(std::string_view text);

    [[nodiscard]] const std::string& PartialPath() const { return m_partial; }

private:
    std::string m_path;
    std::string m_partial;
    CUniqueFile m_file;
};

/// Reads a whole file. @return whether it could be read.
[[nodiscard]] bool ReadWholeFile(const std::string& path, std::string& bytes);
