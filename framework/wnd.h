#pragma once

#include <windows.h>

#include <span>

class CWnd;

/// One message that a window class handles, or a range of them that one handler takes.
struct MessageRow {
    UINT message;
    LRESULT (*handle)(CWnd&, WPARAM, LPARAM);
    UINT last = 0;  // of a range that begins with `message`; 0: that one alone
};

/// One command: what runs it and, where given, when its menu item and button are enabled or ticked.
struct CommandRow {
    UINT id;
    void (*run)(CWnd&);
    bool (*enabled)(const CWnd&) = nullptr;
    bool (*checked)(const CWnd&) = nullptr;
};

/// One notification that a control sent to its parent and that is handed back to the control.
struct NotifyRow {
    UINT code;
    LRESULT (*handle)(CWnd&, NMHDR&);
};

template <class>
struct ClassOfMethod;
template <class C, class R, class... A>
struct ClassOfMethod<R (C::*)(A...)> {
    using Type = C;
};
template <class C, class R, class... A>
struct ClassOfMethod<R (C::*)(A...) const> {
    using Type = C;
};
template <auto Method>
using ClassOf = typename ClassOfMethod<decltype(Method)>::Type;

/// Turns a method into a table entry: `{WM_SIZE, Handle<&CFrameWnd::OnSize>}`.
template <auto Method>
LRESULT Handle(CWnd& window, WPARAM wParam, LPARAM lParam) {
    return (static_cast<ClassOf<Method>&>(window).*Method)(wParam, lParam);
}
template <auto Method>
void Run(CWnd& window) {
    (static_cast<ClassOf<Method>&>(window).*Method)();
}
template <auto Method>
bool When(const CWnd& window) {
    return (static_cast<const ClassOf<Method>&>(window).*Method)();
}
template <auto Method>
LRESULT Reflect(CWnd& window, NMHDR& header) {
    return (static_cast<ClassOf<Method>&>(window).*Method)(header);
}

/// A control's colour request, handed back by the parent to the control that sent it.
constexpr UINT OCM_CTLCOLORSTATIC = 0x2000 + WM_CTLCOLORSTATIC;

/// Where a window is created: position and size in pixels, or CW_USEDEFAULT.
struct Placement {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// A window and its handle, living as one. Derived classes declare what they handle in tables; only this
/// class touches window procedures.
class CWnd {
public:
    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd();

    /// The window's handle, borrowed; null before creation and after destruction.
    [[nodiscard]] HWND GetSafeHwnd() const { return m_hwnd; }
    /// The object behind a handle, or null where the window is not one of ours.
    [[nodiscard]] static CWnd* FromHandle(HWND window);

    /// Creates the window from a registered class name. @param id  child identifier, or a menu handle.
    /// @return false, with the system's last error set, when the system refuses.
    [[nodiscard]] bool Create(const char* className, const char* title, DWORD style, DWORD exStyle,
                              const Placement& place, HWND parent, HMENU id);
    /// Takes over a window that exists already: a control, or a dialog at its initialisation.
    void SubclassWindow(HWND window);

    /// Centres the window over its owner, or on the screen where it has none to be seen; it stays on the
    /// screen.
    void CenterWindow();

    /// Runs a command through this window's tables and then its parents'; a greyed command does not run.
    /// @return false when nobody in the chain handles it.
    bool RunCommand(UINT id);

    /// Where a command was found: its row and the window that the row belongs to.
    struct Command {
        const CommandRow* row;
        CWnd* target;
        [[nodiscard]] bool IsEnabled() const {
            return row != nullptr && (row->enabled == nullptr || row->enabled(*target));
        }
        [[nodiscard]] bool IsChecked() const {
            return row != nullptr && row->checked != nullptr && row->checked(*target);
        }
    };
    /// Looks a command up in this window's tables, or where an override routes it to.
    [[nodiscard]] virtual Command FindCommand(UINT id);

protected:
    [[nodiscard]] virtual std::span<const MessageRow> Messages() const { return {}; }
    [[nodiscard]] virtual std::span<const CommandRow> Commands() const { return {}; }
    [[nodiscard]] virtual std::span<const NotifyRow> Notifications() const { return {}; }
    /// The same for classes of this layer, asked after the program's own tables.
    [[nodiscard]] virtual std::span<const MessageRow> FrameworkMessages() const { return {}; }
    [[nodiscard]] virtual std::span<const CommandRow> FrameworkCommands() const { return {}; }

    /// The number of the message that is being handled now.
    [[nodiscard]] UINT CurrentMessage() const { return m_current.message; }
    /// The default handling of the message that is being handled now.
    LRESULT Default();

    /// Where commands go that this window does not know: its parent, unless overridden.
    [[nodiscard]] virtual CWnd* CommandParent() const;

    /// Registers (once) the class of windows that have no system class of their own.
    static const char* RegisterWindowClass(const char* name, HICON icon, HBRUSH background);

private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    bool AcceptCommand(UINT id);
    bool ReflectToChild(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    [[nodiscard]] const MessageRow* FindMessage(UINT message) const;
    void Attach(HWND window);

    struct HandledMessage {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };

    HWND m_hwnd = nullptr;
    WNDPROC m_superProc = nullptr;
    HandledMessage m_current{};
};
