#pragma once

#include <optional>
#include <string>

/// A folder that a test made itself, with files in it; removed at the end.
class CScratchFolder {
public:
    CScratchFolder();
    CScratchFolder(const CScratchFolder&) = delete;
    CScratchFolder& operator=(const CScratchFolder&) = delete;
    ~CScratchFolder();

    /// As in "C:\users\root\Temp\VellumorTest-8-1", without a trailing backslash.
    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// Makes an empty file or a folder in it; returns its full path. Folders between must exist.
    std::string AddFile(const std::string& name) const;
    std::string AddFolder(const std::string& name) const;
    /// Makes a link to a folder. The link is a program's of the host, for the system itself has none to
    /// offer.
    std::string AddFolderLink(const std::string& name, const std::string& target) const;

private:
    std::string m_path;
};

/// Whether a file or folder exists.
[[nodiscard]] bool Exists(const std::string& path);

/// Gives an environment variable another value for a while; no value: it is not set.
class CScratchVariable {
public:
    CScratchVariable(const char* name, const std::optional<std::string>& value);
    CScratchVariable(const CScratchVariable&) = delete;
    CScratchVariable& operator=(const CScratchVariable&) = delete;
    ~CScratchVariable();

private:
    const char* m_name;
    std::optional<std::string> m_before;
};

/// The Windows folder, asked in this program's own way.
[[nodiscard]] std::string TheWindowsFolder();
