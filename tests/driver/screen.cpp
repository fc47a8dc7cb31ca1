#include "tests/driver/screen.h"

#include <algorithm>
#include <functional>

#include "platform/owners.h"
#include "tests/driver/wait.h"
#include "tests/driver/window_access.h"

namespace {

constexpr char kServiceVariable[] = "VELLUMOR_SHOTS";
constexpr DWORD kPicturePatience = 20'000;  // milliseconds

bool FileExists(const std::string& path) {
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// A picture in memory that can be drawn on.
class CCanvas {
public:
    CCanvas(int width, int height)
        : m_width(width), m_height(height), m_context(::CreateCompatibleDC(nullptr)) {
        BITMAPINFO description{};
        description.bmiHeader.biSize = sizeof description.bmiHeader;
        description.bmiHeader.biWidth = width;
        description.bmiHeader.biHeight = -height;  // negative: from the top
        description.bmiHeader.biPlanes = 1;
        description.bmiHeader.biBitCount = 32;
        m_bitmap.Reset(::CreateDIBSection(m_context, &description, DIB_RGB_COLORS, &m_bits, nullptr, 0));
        if (!m_bitmap) throw CDriverError("no picture of that size can be made");
        m_former = ::SelectObject(m_context, m_bitmap.Get());
    }
    CCanvas(const CCanvas&) = delete;
    CCanvas& operator=(const CCanvas&) = delete;
    ~CCanvas() {
        ::SelectObject(m_context, m_former);
        ::DeleteDC(m_context);
    }

    [[nodiscard]] HDC Context() const { return m_context; }
    [[nodiscard]] int Width() const { return m_width; }
    [[nodiscard]] int Height() const { return m_height; }
    [[nodiscard]] std::vector<DWORD> Pixels() const {
        ::GdiFlush();
        const auto* first = static_cast<const DWORD*>(m_bits);
        return {first, first + m_width * m_height};
    }

private:
    int m_width;
    int m_height;
    HDC m_context;
    CUniqueBitmap m_bitmap;
    void* m_bits = nullptr;
    HGDIOBJ m_former = nullptr;
};

/// A system icon as a dialog shows it.
std::vector<DWORD> IconPixels(LPCSTR icon, int width, int height) {
    CCanvas canvas(width, height);
    const RECT all{0, 0, width, height};
    ::FillRect(canvas.Context(), &all, ::GetSysColorBrush(COLOR_3DFACE));
    ::DrawIconEx(canvas.Context(), 0, 0, ::LoadIconA(nullptr, icon), width, height, 0, nullptr, DI_NORMAL);
    return canvas.Pixels();
}

std::size_t CountDifferent(const std::vector<DWORD>& left, const std::vector<DWORD>& right) {
    constexpr DWORD kColours = 0x00FFFFFF;
    std::size_t count = 0;
    for (std::size_t index = 0; index < std::min(left.size(), right.size()); ++index)
        if ((left[index] & kColours) != (right[index] & kColours)) ++count;
    return count;
}

void CreateEmptyFile(const std::string& path) {
    const CUniqueFile file(::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                         FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw CDriverError(path + " cannot be created");
}

}  // namespace

std::vector<DWORD> ScreenPixels(const RECT& rect) {
    CCanvas canvas(rect.right - rect.left, rect.bottom - rect.top);
    const HDC screen = ::GetDC(nullptr);
    ::BitBlt(canvas.Context(), 0, 0, canvas.Width(), canvas.Height(), screen, rect.left, rect.top, SRCCOPY);
    ::ReleaseDC(nullptr, screen);
    return canvas.Pixels();
}

bool IsDrawnOn(const RECT& rect) {
    const std::vector<DWORD> pixels = ScreenPixels(rect);
    return std::ranges::adjacent_find(pixels, std::ranges::not_equal_to()) != pixels.end();
}

namespace {

std::string NearestSystemIcon(const RECT& rect) {
    const struct {
        const char* name;
        LPCSTR icon;
    } icons[] = {{"error", IDI_ERROR},
                 {"question", IDI_QUESTION},
                 {"warning", IDI_WARNING},
                 {"information", IDI_INFORMATION}};
    const std::vector<DWORD> shown = ScreenPixels(rect);
    std::string nearest;
    std::size_t fewest = shown.size() + 1;
    for (const auto& [name, icon] : icons) {
        const std::size_t different =
            CountDifferent(shown, IconPixels(icon, rect.right - rect.left, rect.bottom - rect.top));
        if (different < fewest) {
            fewest = different;
            nearest = name;
        }
    }
    return nearest;
}

}  // namespace

std::string ShownSystemIcon(HWND control, const std::string& expected) {
    std::string shown;
    const auto isExpected = [&] { return (shown = NearestSystemIcon(ScreenRect(control))) == expected; };
    (void)StaysFalse(isExpected, kPatience);
    return shown;
}

bool TakePicture(const std::string& name) {
    char folder[MAX_PATH] = "";
    const DWORD length = ::GetEnvironmentVariableA(kServiceVariable, folder, sizeof folder);
    if (length == 0 || length >= sizeof folder) return false;
    const std::string path = std::string(folder) + "\\" + name;
    CreateEmptyFile(path + ".request");
    const auto isAnswered = [&path] { return FileExists(path + ".done") || FileExists(path + ".failed"); };
    WaitFor("the picture " + name, isAnswered, kPicturePatience);
    if (!FileExists(path + ".done")) throw CDriverError("the picture " + name + " could not be taken");
    ::DeleteFileA((path + ".done").c_str());
    return true;
}
