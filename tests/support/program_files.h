#pragma once

#include <string>
#include <vector>

/// A folder beside this program, as the program under test finds it; not there at first, and gone at the end
/// with all that was put into it.
class CProgramSubfolder {
public:
    explicit CProgramSubfolder(const char* name);
    CProgramSubfolder(const CProgramSubfolder&) = delete;
    CProgramSubfolder& operator=(const CProgramSubfolder&) = delete;
    ~CProgramSubfolder();

    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] bool Exists() const;
    void Make() const;
    /// Makes a file with some text in it; the folder must be there.
    void AddFile(const std::string& name, const std::string& text = "text") const;
    [[nodiscard]] bool HasFile(const std::string& name) const;
    /// The names of the files in it, in the order of the alphabet.
    [[nodiscard]] std::vector<std::string> Files() const;

private:
    void Remove() const;

    std::string m_path;
};

[[nodiscard]] std::string TextOfFile(const std::string& path);
