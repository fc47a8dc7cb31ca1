#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// One running process.
struct RunningProgram {
    std::string fileName;  // without folder, as in "regedit.exe"
    DWORD processId = 0;
    DWORD parentId = 0;  // of the process that started it, which may be gone and its number given to another
};

/// Everything that starts, ends or endangers something outside this program, and besides that only what Wine
/// merely pretends to do or a test has to choose. The program calls the system through it; tests put a
/// recording fake in its place.
class CSystemActions {
public:
    virtual ~CSystemActions() = default;

    /// The processes that run now, in the system's order; empty when no snapshot can be taken.
    [[nodiscard]] virtual std::vector<RunningProgram> ListPrograms();
    /// Ends a process with exit code 0 and waits, two seconds at most, until it is gone; a process that
    /// cannot be opened is left alone.
    virtual void EndProgram(DWORD processId);
    /// Starts a program.
    /// @param commandLine  with the full path of the program, in quotes, in front; another is refused.
    /// @param show         SW_...
    /// @return above 31: started; otherwise the system's error.
    virtual UINT RunProgram(const char* commandLine, int show);
    /// Opens an address or a file in the program that the user has for it.
    /// @return above 32: opened; otherwise the shell's error.
    [[nodiscard]] virtual int OpenWithShell(const char* target);
    /// Sounds the plain beep that says no.
    virtual void Beep();
    /// Opens a compiled help file in the help viewer, which is loaded on first use. Does nothing where the
    /// system has no viewer; a missing file is reported by the viewer itself.
    virtual void ShowHelp(const char* file);
    /// Shows a message box. @param flags  MB_... @return the button: IDOK, IDCANCEL, IDYES, IDNO.
    virtual int ShowMessage(HWND owner, const char* text, const char* caption, UINT flags);
    /// Deletes everything in a folder; see DeleteFolderContents.
    virtual void EmptyFolder(const std::string& folder);

    /// Writes a key and all that is below it to a file in the system's own format.
    /// @return the system's code; ERROR_ALREADY_EXISTS when the file is there.
    [[nodiscard]] virtual LSTATUS SaveHive(HKEY hive, const char* file);
    /// Has the system load another file for a hive from its next start on, in the place and under the name of
    /// the present one, which becomes `oldFile`. The new file is gone from its own place then.
    /// @return the system's code.
    [[nodiscard]] virtual LSTATUS ReplaceHive(HKEY hive, const char* newFile, const char* oldFile);
    /// @param drive  as in "C:". @return its device, as in "\Device\HarddiskVolume1"; empty: unknown.
    [[nodiscard]] virtual std::string DeviceOfDrive(const char* drive);
    /// Whether this process runs with the rights of an administrator, and not just for a user who could have
    /// them.
    [[nodiscard]] virtual bool IsAdministrator();
    /// Ends all programs and starts the system anew. @return false when the system refuses.
    virtual bool RestartSystem();
};

/// The actions in force.
[[nodiscard]] CSystemActions& SystemActions();
/// Puts others in force; null brings the system's own back. The object is borrowed.
void SetSystemActions(CSystemActions* actions);
