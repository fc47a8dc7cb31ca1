#include <doctest/doctest.h>

#include "app/about_box.h"
#include "tests/ui/shell.h"

namespace {

constexpr UINT kAbout = 57664;
constexpr int kVersion = 1011;
constexpr int kIcon = 1012;
constexpr int kWeb = 1037;
constexpr int kMail = 1038;

constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kPurple = RGB(128, 0, 128);

HWND AboutBox() { return ::FindWindowA(nullptr, "About Vellumor"); }
HWND Control(int id) { return ::GetDlgItem(AboutBox(), id); }

void Click(int id) { ::SendMessageA(Control(id), WM_LBUTTONDOWN, MK_LBUTTON, 0); }

/// Opens the about box, looks at it, and closes it by OK.
void LookAtAboutBox(const CShell& shell, const std::function<void()>& look) {
    bool looked = false;
    After(50, [&] {
        looked = AboutBox() != nullptr;
        if (looked) look();
        ::SendMessageA(AboutBox(), WM_COMMAND, IDOK, 0);
    });
    shell.Command(kAbout);
    CHECK(looked);
    CHECK(AboutBox() == nullptr);
}

/// How the dialog has a label drawn.
struct Drawing {
    COLORREF color;
    int background;
    bool isUnderlined;
    HGDIOBJ brush;
};

Drawing DrawingOf(int id) {
    const HDC device = ::GetDC(Control(id));
    const LRESULT brush = ::SendMessageA(AboutBox(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device),
                                         reinterpret_cast<LPARAM>(Control(id)));
    LOGFONTA font{};
    ::GetObjectA(::GetCurrentObject(device, OBJ_FONT), sizeof font, &font);
    const Drawing drawing{::GetTextColor(device), ::GetBkMode(device), font.lfUnderline != FALSE,
                          reinterpret_cast<HGDIOBJ>(brush)};
    ::ReleaseDC(Control(id), device);
    return drawing;
}

/// A control's place in dialog units, which the dialog's font decides.
RECT PlaceOf(int id) {
    RECT place;
    ::GetWindowRect(Control(id), &place);
    ::MapWindowPoints(nullptr, AboutBox(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

RECT InPixels(RECT units) {
    ::MapDialogRect(AboutBox(), &units);
    return units;
}

void CheckPlace(int id, int x, int y, int width, int height) {
    const RECT place = PlaceOf(id);
    const RECT expected = InPixels({x, y, x + width, y + height});
    CHECK(::EqualRect(&place, &expected) != FALSE);
}

}  // namespace

TEST_CASE("the about box tells the version, the architecture and the commit") {
    CShell shell;
    LookAtAboutBox(shell, [] {
        const std::string line = WindowText(Control(kVersion));
        const std::string opening =
            std::string("Vellumor v4.55 (") + (sizeof(void*) == 4 ? "x86" : "x64") + ", built from ";
        CHECK(line.starts_with(opening));
        CHECK(line.size() > opening.size() + 1);
        CHECK(line.ends_with(")"));
        CHECK(::SendMessageA(Control(kIcon), STM_GETICON, 0, 0) != 0);
    });
}

TEST_CASE("the about box has its contact group and both links in their places") {
    CShell shell;
    LookAtAboutBox(shell, [] {
        CHECK(WindowText(Control(kWeb)) == "https://vellumor.example/");
        CHECK(WindowText(Control(kMail)) == "support@vellumor.example");
        const HWND group = ::FindWindowExA(AboutBox(), nullptr, "Button", "Contact information");
        REQUIRE(group != nullptr);
        CHECK(::FindWindowExA(AboutBox(), nullptr, "Static", "Web:") != nullptr);
        CHECK(::FindWindowExA(AboutBox(), nullptr, "Static", "Support:") != nullptr);
        CheckPlace(kWeb, 41, 85, 114, 8);
        CheckPlace(kMail, 50, 72, 109, 8);
        CheckPlace(IDOK, 121, 115, 50, 14);
        const RECT icon = InPixels({10, 16, 10, 16});
        CHECK(PlaceOf(kIcon).left == icon.left);
        CHECK(PlaceOf(kIcon).top == icon.top);
    });
}

TEST_CASE("links are underlined and blue on the dialog's own background, other labels are not") {
    CShell shell;
    LookAtAboutBox(shell, [] {
        for (const int link : {kWeb, kMail}) {
            const Drawing drawing = DrawingOf(link);
            CHECK(drawing.color == kBlue);
            CHECK(drawing.background == TRANSPARENT);
            CHECK(drawing.isUnderlined);
            CHECK(drawing.brush == ::GetStockObject(NULL_BRUSH));
            LOGFONTA font{};
            ::GetObjectA(reinterpret_cast<HFONT>(::SendMessageA(Control(link), WM_GETFONT, 0, 0)),
                         sizeof font, &font);
            CHECK(font.lfUnderline != FALSE);
        }
        CHECK(DrawingOf(kVersion).color != kBlue);
        CHECK_FALSE(DrawingOf(kVersion).isUnderlined);
    });
}

TEST_CASE("a link that opened is purple as long as the dialog is open, and only that one") {
    CRecordingActions actions;
    CShell shell;
    LookAtAboutBox(shell, [] {
        Click(kWeb);
        CHECK(DrawingOf(kWeb).color == kPurple);
        Click(kWeb);
        CHECK(DrawingOf(kWeb).color == kPurple);
        CHECK(DrawingOf(kMail).color == kBlue);
        Click(kMail);
    });
    CHECK(actions.asked == std::vector<std::string>{"open https://vellumor.example/",
                                                    "open https://vellumor.example/",
                                                    "open mailto:support@vellumor.example"});
    LookAtAboutBox(shell, [] { CHECK(DrawingOf(kWeb).color == kBlue); });
}

TEST_CASE("a link that cannot be opened beeps and keeps its colour") {
    CRecordingActions actions;
    actions.shellAnswer = 32;
    CShell shell;
    LookAtAboutBox(shell, [] {
        Click(kWeb);
        CHECK(DrawingOf(kWeb).color == kBlue);
    });
    CHECK(actions.asked == std::vector<std::string>{"open https://vellumor.example/", "beep"});
}

TEST_CASE("a link takes the mouse and shows a hand") {
    CShell shell;
    LookAtAboutBox(shell, [] {
        CHECK(::SendMessageA(Control(kWeb), WM_NCHITTEST, 0, 0) == HTCLIENT);
        const HCURSOR before = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
        CHECK(::SendMessageA(Control(kWeb), WM_SETCURSOR, reinterpret_cast<WPARAM>(Control(kWeb)),
                             HTCLIENT) == TRUE);
        CHECK(::GetCursor() != ::LoadCursorA(nullptr, IDC_WAIT));
        CHECK(::GetCursor() != ::LoadCursorA(nullptr, IDC_ARROW));
        CHECK(::GetCursor() != nullptr);
        ::SetCursor(before);
    });
}

TEST_CASE("a link without a target takes its string resource, then its own text, then does nothing") {
    CRecordingActions actions;
    CShell shell;
    const auto clickOn = [&shell](int id, const char* text) {
        const HWND label =
            ::CreateWindowExA(0, "Static", text, WS_CHILD, 0, 0, 50, 10, shell.FrameWindow(),
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        CStaticLink link;
        link.SubclassWindow(label);
        ::SendMessageA(label, WM_LBUTTONDOWN, 0, 0);
        ::DestroyWindow(label);
    };
    clickOn(1037, "https://text.example/");
    clickOn(999, "https://text.example/");
    clickOn(999, "");
    CHECK(actions.asked ==
          std::vector<std::string>{"open https://vellumor.example/", "open https://text.example/"});
}

TEST_CASE("a link on a picture keeps the picture's colours") {
    CShell shell;
    const HWND picture = ::CreateWindowExA(0, "Static", "", WS_CHILD | SS_ICON, 0, 0, 50, 10,
                                           shell.FrameWindow(), nullptr, nullptr, nullptr);
    CStaticLink link;
    link.SubclassWindow(picture);
    const HDC device = ::GetDC(picture);
    ::SetTextColor(device, RGB(1, 2, 3));
    ::SendMessageA(shell.FrameWindow(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device),
                   reinterpret_cast<LPARAM>(picture));
    CHECK(::GetTextColor(device) != kBlue);
    ::ReleaseDC(picture, device);
    ::DestroyWindow(picture);
}

TEST_CASE("a link without a target opens nothing") {
    CRecordingActions actions;
    CHECK(CHyperLink().Navigate() == 0);
    CHECK(actions.asked.empty());
}
