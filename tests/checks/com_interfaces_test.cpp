#include <doctest/doctest.h>

#include "analysis/com/com_checks.h"
#include "check_support.h"

namespace {

constexpr const char* kClassLinks[] = {"ProxyStubClsid", "ProxyStubClsid32", "BaseInterface"};
constexpr const char* kLinks[] = {"TypeLib", "ProxyStubClsid", "ProxyStubClsid32", "BaseInterface"};

std::string RowOf(const std::string& link, const std::string& data) {
    return "\\HKEY_CLASSES_ROOT\\Interface\\{I}\\" + link + "|timed||" + data + "\n";
}

/// The rows of an interface's link; {class} is a class, {library} a type library, {locked} both, refused.
std::string RowsOfLink(const std::string& link, const std::string& name, const std::string& data) {
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{class}");
    registry.Add(HKEY_CLASSES_ROOT, "TypeLib\\{library}");
    registry.Add(HKEY_CLASSES_ROOT, "Interface\\{interface}");
    for (const char* path : {"CLSID\\{locked}", "TypeLib\\{locked}"})
        registry.Lock(registry.Add(HKEY_CLASSES_ROOT, path));
    registry.AddText(HKEY_CLASSES_ROOT, "Interface\\{I}\\" + link, name, data);
    return RowsOf(&CheckInterfaces);
}

std::string RowsOfLink(const std::string& link, const std::string& data) {
    return RowsOfLink(link, "", data);
}

/// The rows about one top-level key, which `plant` fills; the key "CLSID" that stands beside it is sound.
template <class Plant>
std::string RowsOfTopLevel(Plant plant) {
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "CLSID\\{here}", "", "x");
    registry.Lock(registry.Add(HKEY_CLASSES_ROOT, "CLSID\\{locked}"));
    plant(registry);
    return RowsOf(&CheckClassesRootKeys);
}

std::string RowsOfDefault(const std::string& bytes, DWORD type) {
    return RowsOfTopLevel([&](CScratchRegistry& registry) {
        SetBytes(registry.Add(HKEY_CLASSES_ROOT, ".foo"), "", type, bytes);
    });
}

std::string RowsOfClassId(const std::string& name, const std::string& data) {
    return RowsOfTopLevel([&](CScratchRegistry& registry) {
        registry.AddText(HKEY_CLASSES_ROOT, "Some.Class\\CLSID", name, data);
    });
}

}  // namespace

TEST_CASE("an interface's type library must be registered") {
    CHECK(RowsOfLink("TypeLib", "{gone}") == RowOf("TypeLib", "{gone}"));
    CHECK(RowsOfLink("TypeLib", "{class}") == RowOf("TypeLib", "{class}"));
    CHECK(RowsOfLink("TypeLib", "{library}").empty());
    CHECK(RowsOfLink("TypeLib", "library").empty());
    CHECK(RowsOfLink("TypeLib", "{locked}").empty());
}

TEST_CASE("an interface's proxy classes and its base interface are looked up among the classes") {
    for (const char* link : kClassLinks) {
        CAPTURE(link);
        CHECK(RowsOfLink(link, "{gone}") == RowOf(link, "{gone}"));
        CHECK(RowsOfLink(link, "{library}") == RowOf(link, "{library}"));
        CHECK(RowsOfLink(link, "{interface}") == RowOf(link, "{interface}"));
        CHECK(RowsOfLink(link, "{class}").empty());
        CHECK(RowsOfLink(link, "class").empty());
        CHECK(RowsOfLink(link, "{locked}").empty());
    }
}

TEST_CASE("a base interface that is an interface but no class is reported") {
    const std::string unknown = "{00000000-0000-0000-C000-000000000046}";
    CScratchRegistry registry;
    registry.AddText(HKEY_CLASSES_ROOT, "Interface\\" + unknown, "", "IUnknown");
    registry.AddText(HKEY_CLASSES_ROOT, "Interface\\{I}\\BaseInterface", "", unknown);
    CHECK(RowsOf(&CheckInterfaces) == RowOf("BaseInterface", unknown));
    registry.Add(HKEY_CLASSES_ROOT, "CLSID\\" + unknown);
    CHECK(RowsOf(&CheckInterfaces).empty());
}

TEST_CASE("an interface's link key that holds nothing at any level is reported once") {
    for (const std::string link : kLinks) {
        CAPTURE(link);
        CScratchRegistry registry;
        registry.Add(HKEY_CLASSES_ROOT, "Interface\\{I}\\" + link);
        CHECK(RowsOf(&CheckInterfaces) == RowOf(link, ""));
        registry.Add(HKEY_CLASSES_ROOT, "Interface\\{I}\\" + link + "\\a\\b");
        CHECK(RowsOf(&CheckInterfaces) == RowOf(link, ""));
        const HKEY key = registry.AddText(HKEY_CLASSES_ROOT, "Interface\\{I}\\" + link, "", "");
        CHECK(RowsOf(&CheckInterfaces) == RowOf(link, ""));
        SetText(key, "Version", "1.0");
        CHECK(RowsOf(&CheckInterfaces).empty());
    }
}

TEST_CASE("named values and other keys of an interface are not tested") {
    for (const char* link : kLinks) CHECK(RowsOfLink(link, "Version", "{gone}").empty());
    for (const char* name : {"NumMethods", "AsynchronousInterface", "ProxyStubClsid64", "CLSID"})
        CHECK(RowsOfLink(name, "{gone}").empty());
    CScratchRegistry registry;
    registry.Add(HKEY_CLASSES_ROOT, "Interface\\{I}");
    CHECK(RowsOf(&CheckInterfaces).empty());
}

TEST_CASE("an interface's links are reported in their order, and those without write access passed over") {
    CScratchRegistry registry;
    for (const char* link : {"BaseInterface", "ProxyStubClsid32", "TypeLib", "ProxyStubClsid"})
        registry.AddText(HKEY_CLASSES_ROOT, std::string("Interface\\{I}\\") + link, "", "{gone}");
    registry.Add(HKEY_CLASSES_ROOT, "Interface\\{H}\\TypeLib");
    const std::string first = "\\HKEY_CLASSES_ROOT\\Interface\\{H}\\TypeLib|timed||\n";
    CHECK(RowsOf(&CheckInterfaces) == first + RowOf("TypeLib", "{gone}") + RowOf("ProxyStubClsid", "{gone}") +
                                          RowOf("ProxyStubClsid32", "{gone}") +
                                          RowOf("BaseInterface", "{gone}"));
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "Interface\\{I}\\ProxyStubClsid32"));
    registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, "Interface\\{H}"));
    CHECK(RowsOf(&CheckInterfaces) ==
          RowOf("TypeLib", "{gone}") + RowOf("ProxyStubClsid", "{gone}") + RowOf("BaseInterface", "{gone}"));
}

TEST_CASE("an interface's links are read whole") {
    for (const std::size_t length : {std::size_t{200}, std::size_t{240}}) {
        const std::string guid(length, 'x');
        for (const char* link : kLinks) CHECK(RowsOfLink(link, guid) == RowOf(link, guid));
    }
    // The text's beginning alone would be a class.
    const std::string deep = "{class}\\" + std::string(100, 'a') + "\\" + std::string(130, 'b');
    CHECK(RowsOfLink("BaseInterface", deep) == RowOf("BaseInterface", deep));
}

TEST_CASE("a top-level key without subkeys, and without values or with an empty default text, is reported") {
    const std::string row = "\\HKEY_CLASSES_ROOT\\.foo|timed||\n";
    CHECK(RowsOfTopLevel([](CScratchRegistry& registry) { registry.Add(HKEY_CLASSES_ROOT, ".foo"); }) == row);
    CHECK(RowsOfDefault(std::string(1, '\0'), REG_SZ) == row);
    CHECK(RowsOfDefault("", REG_SZ) == row);
}

TEST_CASE("a top-level key with a subkey, a named value, data or another type is not reported") {
    CHECK(RowsOfDefault("x", REG_SZ).empty());
    CHECK(RowsOfDefault(std::string(1, '\0'), REG_EXPAND_SZ).empty());
    CHECK(RowsOfDefault(std::string(4, '\0'), REG_DWORD).empty());
    CHECK(RowsOfDefault("", REG_BINARY).empty());
    CHECK(RowsOfTopLevel([](CScratchRegistry& registry) {
              registry.AddText(HKEY_CLASSES_ROOT, ".named", "x", "");
              registry.AddText(HKEY_CLASSES_ROOT, ".large", std::string(300, 'n'), std::string(5000, 'd'));
              registry.Add(HKEY_CLASSES_ROOT, ".subkey\\x");
              registry.AddText(HKEY_CLASSES_ROOT, ".both", "", "");
              registry.Add(HKEY_CLASSES_ROOT, ".both\\x");
              registry.MakeReadOnly(registry.Add(HKEY_CLASSES_ROOT, ".readonly"));
          }).empty());
}

TEST_CASE("a long default value that begins with a zero is an empty text") {
    CHECK(RowsOfDefault(std::string(5000, '\0'), REG_SZ) == "\\HKEY_CLASSES_ROOT\\.foo|timed||\n");
}

TEST_CASE("a top-level key's class must be registered") {
    const std::string row = "\\HKEY_CLASSES_ROOT\\Some.Class\\CLSID|timed||";
    CHECK(RowsOfClassId("", "{gone}") == row + "{gone}\n");
    CHECK(RowsOfClassId("", "gone") == row + "gone\n");
    CHECK(RowsOfClassId("", "{here}").empty());
    CHECK(RowsOfClassId("", "here").empty());
    CHECK(RowsOfClassId("", "here}") == row + "here}\n");
    CHECK(RowsOfClassId("", "{locked}").empty());
    CHECK(RowsOfClassId("", "").empty());
    CHECK(RowsOfClassId("named", "{gone}").empty());
    CHECK(RowsOfClassId("", std::string(240, 'x')) == row + std::string(240, 'x') + "\n");
}

TEST_CASE("top-level keys of every kind are reported in their order") {
    const std::string rows = RowsOfTopLevel([](CScratchRegistry& registry) {
        for (const char* name : {"*", ".a", "Some.Class", "Interface", "Zz"})
            registry.Add(HKEY_CLASSES_ROOT, name);
        registry.AddText(HKEY_CLASSES_ROOT, "Some.Class\\CLSID", "", "{gone}");
    });
    CHECK(rows ==
          Lines({"\\HKEY_CLASSES_ROOT\\*|timed||", "\\HKEY_CLASSES_ROOT\\.a|timed||",
                 "\\HKEY_CLASSES_ROOT\\Interface|timed||",
                 "\\HKEY_CLASSES_ROOT\\Some.Class\\CLSID|timed||{gone}", "\\HKEY_CLASSES_ROOT\\Zz|timed||"}));
}
