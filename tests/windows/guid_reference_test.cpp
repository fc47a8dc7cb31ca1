#include <doctest/doctest.h>

#include <string>

#include "registry/class_reference.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

const std::string kGuid = "7E1150A7-0000-4000-8000-00000000C1A5";
const std::string kBraced = "{" + kGuid + "}";

struct GuidArea {
    const char* name;
    bool (*isMissing)(std::string_view guid);
};
constexpr GuidArea kTypeLib{"TypeLib", &TypeLibMissing};
constexpr GuidArea kClsid{"CLSID", &ClassIdMissing};
constexpr GuidArea kAppId{"AppID", &AppIdMissing};

std::string Under(const GuidArea& area, const std::string& name) {
    return std::string(area.name) + "\\" + name;
}

/// Whether a GUID counts as missing whose key is a link to the key of an object name.
bool LinkIsMissing(const GuidArea& area, const wchar_t* target) {
    CUniqueKey parent;
    REQUIRE(::RegCreateKeyA(HKEY_CLASSES_ROOT, area.name, parent.Receive()) == ERROR_SUCCESS);
    const CUniqueKey link = MakeLink(parent.Get(), kBraced, target);
    const bool isMissing = area.isMissing(kBraced);
    CHECK(DeleteOpenKey(link.Get()));
    return isMissing;
}

}  // namespace

TEST_CASE("a type library or class is found with and without braces") {
    for (const GuidArea& area : {kTypeLib, kClsid}) {
        CAPTURE(area.name);
        CHECK(area.isMissing(kGuid));
        CHECK(area.isMissing(kBraced));
        const CScratchKey key(HKEY_CLASSES_ROOT, Under(area, kBraced));
        CHECK_FALSE(area.isMissing(kGuid));
        CHECK_FALSE(area.isMissing(kBraced));
        CHECK(area.isMissing("{" + kGuid));
        CHECK(area.isMissing(kGuid + "}"));
    }
}

TEST_CASE("a GUID without braces is not looked up as it stands") {
    for (const GuidArea& area : {kTypeLib, kClsid}) {
        CAPTURE(area.name);
        const CScratchKey key(HKEY_CLASSES_ROOT, Under(area, kGuid));
        CHECK(area.isMissing(kGuid));
    }
}

TEST_CASE("a GUID with one brace is looked up as it stands") {
    for (const GuidArea& area : {kTypeLib, kClsid})
        for (const std::string name : {"{7e1150a7", "7e1150a7}"}) {
            CAPTURE(area.name);
            CAPTURE(name);
            CHECK(area.isMissing(name));
            const CScratchKey key(HKEY_CLASSES_ROOT, Under(area, name));
            CHECK_FALSE(area.isMissing(name));
        }
}

TEST_CASE("an application id is looked up as it stands, braces or not") {
    {
        const CScratchKey key(HKEY_CLASSES_ROOT, Under(kAppId, kBraced));
        CHECK_FALSE(AppIdMissing(kBraced));
        CHECK(AppIdMissing(kGuid));
    }
    const CScratchKey key(HKEY_CLASSES_ROOT, Under(kAppId, kGuid));
    CHECK_FALSE(AppIdMissing(kGuid));
    CHECK(AppIdMissing(kBraced));
}

TEST_CASE("each kind of GUID is looked up in its own area") {
    for (const GuidArea& area : {kTypeLib, kClsid, kAppId}) {
        const CScratchKey key(HKEY_CLASSES_ROOT, Under(area, kBraced));
        for (const GuidArea& other : {kTypeLib, kClsid, kAppId}) {
            CAPTURE(area.name);
            CAPTURE(other.name);
            CHECK(other.isMissing(kBraced) == (std::string(area.name) != other.name));
        }
    }
}

TEST_CASE("a GUID's key that refuses access counts as present") {
    for (const GuidArea& area : {kTypeLib, kClsid, kAppId})
        for (REGSAM rights : {REGSAM{0}, REGSAM{KEY_READ}}) {
            CAPTURE(area.name);
            CAPTURE(rights);
            CScratchKey key(HKEY_CLASSES_ROOT, Under(area, kBraced));
            key.Restrict(key.Get(), rights);
            CHECK_FALSE(area.isMissing(kBraced));
        }
}

TEST_CASE("a GUID's key that fails to open in another way than not found counts as present") {
    for (const GuidArea& area : {kTypeLib, kClsid, kAppId}) {
        CAPTURE(area.name);
        CHECK_FALSE(area.isMissing("{" + std::string(300, '0') + "}"));
    }
}

TEST_CASE("a GUID's key that opens but cannot be queried is missing") {
    for (const GuidArea& area : {kTypeLib, kClsid, kAppId}) {
        CAPTURE(area.name);
        CHECK(LinkIsMissing(area, kUnreadableKey));
    }
}

TEST_CASE("type libraries and classes are opened for all access, applications for what there is") {
    // A key that grants nothing refuses all access, and so counts as present. Opened for what it grants, it
    // goes on to the query, which fails.
    CUniqueKey parent;
    REQUIRE(::RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Windows NT\\CurrentVersion\\Perflib", 0,
                            KEY_ALL_ACCESS, parent.Receive()) == ERROR_SUCCESS);
    const CUniqueKey unreadable = CreateKeyByCountedName(parent.Get(), L"009");
    REQUIRE(static_cast<bool>(unreadable));
    CScratchKey restorer;
    restorer.Restrict(unreadable.Get(), 0);
    CHECK_FALSE(LinkIsMissing(kTypeLib, kUnreadableKey));
    CHECK_FALSE(LinkIsMissing(kClsid, kUnreadableKey));
    CHECK(LinkIsMissing(kAppId, kUnreadableKey));
}
