#include "registry/class_reference.h"

#include <doctest/doctest.h>

#include <string>

#include "tests/support/native_calls.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr MissingRule kEveryRule[] = {MissingRule::Strict, MissingRule::Lenient,
                                      MissingRule::LenientAllAccess};

// Refused by the system with another code than "not found".
const std::string kTooLongPath(300, 'x');

}  // namespace

TEST_CASE("a class key that exists is not missing, and one that does not is, by every rule") {
    CScratchKey key(HKEY_CLASSES_ROOT);
    key.Add("shell\\open");
    for (MissingRule rule : kEveryRule) {
        CAPTURE(static_cast<int>(rule));
        CHECK_FALSE(ClassesKeyMissing(key.Subkey(), rule));
        CHECK_FALSE(ClassesKeyMissing(key.Subkey() + "\\shell\\open", rule));
        CHECK_FALSE(ClassesKeyMissing(key.Subkey() + "\\SHELL", rule));
        CHECK(ClassesKeyMissing(key.Subkey() + "\\absent", rule));
        CHECK(ClassesKeyMissing(key.Subkey() + "\\absent\\open", rule));
    }
}

TEST_CASE("an empty class name is not missing") {
    for (MissingRule rule : kEveryRule) CHECK_FALSE(ClassesKeyMissing("", rule));
}

TEST_CASE("a class key that cannot be opened is missing by the strict rule alone") {
    CHECK(ClassesKeyMissing(kTooLongPath, MissingRule::Strict));
    CHECK_FALSE(ClassesKeyMissing(kTooLongPath, MissingRule::Lenient));
    CHECK_FALSE(ClassesKeyMissing(kTooLongPath, MissingRule::LenientAllAccess));
}

TEST_CASE("a class key that refuses all access is present") {
    CScratchKey key(HKEY_CLASSES_ROOT);
    key.Restrict(key.Get(), 0);
    CHECK_FALSE(ClassesKeyMissing(key.Subkey(), MissingRule::LenientAllAccess));
    CHECK_FALSE(ClassesKeyMissing(key.Subkey(), MissingRule::Lenient));
    key.Restrict(key.Get(), KEY_READ);
    for (MissingRule rule : kEveryRule) CHECK_FALSE(ClassesKeyMissing(key.Subkey(), rule));
}

TEST_CASE("a class key that opens but cannot be queried is missing, unless it was opened for all access") {
    CScratchKey key(HKEY_CLASSES_ROOT);
    key.AddLink("unreadable", kUnreadableKey);
    const std::string path = key.Subkey() + "\\unreadable";
    CHECK(ClassesKeyMissing(path, MissingRule::Strict));
    CHECK(ClassesKeyMissing(path, MissingRule::Lenient));
    CHECK_FALSE(ClassesKeyMissing(path, MissingRule::LenientAllAccess));  // the code is not "not found"
}

TEST_CASE("a class key that is a link to nowhere is missing") {
    CScratchKey key(HKEY_CLASSES_ROOT);
    key.AddLink("broken", ObjectName(key.Get()) + L"\\absent");
    for (MissingRule rule : kEveryRule) CHECK(ClassesKeyMissing(key.Subkey() + "\\broken", rule));
}

TEST_CASE("looking a class key up leaves no handle open") {
    CScratchKey key(HKEY_CLASSES_ROOT);
    const std::size_t before = OwnHandles().size();
    for (MissingRule rule : kEveryRule) CHECK_FALSE(ClassesKeyMissing(key.Subkey(), rule));
    CHECK(TypeLibMissing("absent"));
    CHECK(OwnHandles().size() == before);
}
