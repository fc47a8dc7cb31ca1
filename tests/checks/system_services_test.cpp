// Checks of the system's lists whose entries are subkeys with one value to look at.
#include <windows.h>

#include <doctest/doctest.h>

#include <string>

#include "analysis/system/system_checks.h"
#include "area_cases.h"
#include "system_areas.h"
#include "tests/support/scratch_folder.h"

namespace {

struct SingleValue {
    Check check;
    const char* area;
    const char* name;
    std::size_t bytes;  // of the buffer that it is read into
};

constexpr SingleValue kValues[] = {
    {&CheckTracing, kTracingArea, "FileDirectory", 100},
    {&CheckServicesAndEventLogs, kApplicationLogArea, "EventMessageFile", 250},
    {&CheckServicesAndEventLogs, kServicesArea, "ImagePath", 250},
    {&CheckServicesAndEventLogs, kSystemLogArea, "EventMessageFile", 250},
    {&CheckServicesAndEventLogs, kTrustArea, "$DLL", 250},
    {&CheckTemplateMacros, kMacrosArea, "", 250},
};

std::string InOtherCase(std::string name) {
    for (char& letter : name)
        letter = static_cast<char>(::IsCharLowerA(letter) != FALSE ? letter - 32 : letter + 32);
    return name;
}

}  // namespace

TEST_CASE("a value whose data fill the buffer is examined, and one byte more is too much") {
    for (const SingleValue& value : kValues) {
        CAPTURE(value.area);
        OneArea one(HKEY_LOCAL_MACHINE, value.area);
        const auto gone = [](std::size_t bytes) { return "C:\\gone\\" + std::string(bytes - 9, 'x'); };
        one.area.Add("A", value.name, gone(value.bytes - 1));
        one.area.Add("B", value.name, gone(value.bytes));
        one.area.Add("C", value.name, gone(value.bytes + 1));
        CHECK(RowsOf(value.check) == Lines({one.area.Timed("A", value.name, gone(value.bytes - 1)),
                                            one.area.Timed("B", value.name, gone(value.bytes))}));
    }
}

TEST_CASE("data without a terminator are taken to their end") {
    for (const SingleValue& value : kValues) {
        CAPTURE(value.area);
        OneArea one(HKEY_LOCAL_MACHINE, value.area);
        const std::string gone = "C:\\gone\\" + std::string(value.bytes - 8, 'x');
        SetBytes(one.area.Key("A"), value.name, REG_BINARY, gone);
        CHECK(RowsOf(value.check) == Lines({one.area.Timed("A", value.name, gone)}));
    }
}

TEST_CASE("the type of a file's value does not matter") {
    for (const SingleValue& value : kValues) {
        CAPTURE(value.area);
        OneArea one(HKEY_LOCAL_MACHINE, value.area);
        one.area.Add("A", value.name, "C:\\gone\\a.dll", REG_EXPAND_SZ);
        one.area.Add("B", value.name, "C:\\gone\\b.dll", REG_BINARY);
        CHECK(RowsOf(value.check) == Lines({one.area.Timed("A", value.name, "C:\\gone\\a.dll"),
                                            one.area.Timed("B", value.name, "C:\\gone\\b.dll")}));
    }
}

TEST_CASE("a value that is not there, or is named in another letter case, gives no row") {
    for (const SingleValue& value : kValues) {
        if (value.name[0] == '\0') continue;
        CAPTURE(value.area);
        OneArea one(HKEY_LOCAL_MACHINE, value.area);
        one.area.Add("A", InOtherCase(value.name), "C:\\gone\\a.dll");
        one.area.Add("B", "Other", "C:\\gone\\b.dll");
        (void)one.area.Key("C");
        CHECK(RowsOf(value.check).empty());
    }
}

TEST_CASE("a file that exists gives no row") {
    const CScratchFolder scratch;
    const std::string file = scratch.AddFile("here.dll");
    for (const SingleValue& value : kValues) {
        if (file.size() >= value.bytes) continue;
        CAPTURE(value.area);
        OneArea one(HKEY_LOCAL_MACHINE, value.area);
        one.area.Add("A", value.name, file);
        CHECK(RowsOf(value.check).empty());
    }
}

TEST_CASE("empty data are tested like any other, except for trust packages and macros") {
    for (const SingleValue& value : kValues) {
        CAPTURE(value.area);
        OneArea one(HKEY_LOCAL_MACHINE, value.area);
        one.area.Add("A", value.name, "");
        const std::string name = value.name;
        const bool mayBeEmpty = name.empty() || name == "$DLL";
        CHECK(RowsOf(value.check) == (mayBeEmpty ? "" : Lines({one.area.Timed("A", name, "")})));
    }
}

TEST_CASE("a tracing folder is tested as it stands, without expansion") {
    OneArea one(HKEY_LOCAL_MACHINE, kTracingArea);
    one.area.Add("A", "FileDirectory", "%windir%\\tracing", REG_EXPAND_SZ);
    one.area.Add("B", "FileDirectory", TheWindowsFolder());
    one.area.Add("C", "FileDirectory", "%windir%");
    CHECK(RowsOf(&CheckTracing) == Lines({one.area.Timed("A", "FileDirectory", "%windir%\\tracing"),
                                          one.area.Timed("C", "FileDirectory", "%windir%")}));
}

TEST_CASE("a trust package's file is tested as it stands and not searched") {
    OneArea one(HKEY_LOCAL_MACHINE, kTrustArea);
    one.area.Add("A", "$DLL", "kernel32.dll");
    one.area.Add("B", "$DLL", "%windir%\\notepad.exe");
    one.area.Add("C", "$DLL", TheWindowsFolder() + "\\system32\\kernel32.dll");
    CHECK(RowsOf(&CheckServicesAndEventLogs) ==
          Lines({one.area.Timed("A", "$DLL", "kernel32.dll"),
                 one.area.Timed("B", "$DLL", "%windir%\\notepad.exe")}));
}

TEST_CASE("an application's message file is sought like a command") {
    OneArea one(HKEY_LOCAL_MACHINE, kApplicationLogArea);
    one.area.Add("A", "EventMessageFile", "kernel32.dll");
    one.area.Add("B", "EventMessageFile", "%SystemRoot%\\System32\\kernel32.dll");
    one.area.Add("C", "EventMessageFile", "%SystemRoot%\\System32\\vellumor-gone.dll");
    one.area.Add("D", "EventMessageFile", "system32\\kernel32.dll");  // not a service's image
    CHECK(RowsOf(&CheckServicesAndEventLogs) ==
          Lines({one.area.Timed("C", "EventMessageFile", "%SystemRoot%\\System32\\vellumor-gone.dll"),
                 one.area.Timed("D", "EventMessageFile", "system32\\kernel32.dll")}));
}

TEST_CASE("a system message file in \"System32\" is never reported, in another spelling it is tested") {
    OneArea one(HKEY_LOCAL_MACHINE, kSystemLogArea);
    one.area.Add("A", "EventMessageFile", "%SystemRoot%\\System32\\vellumor-gone.dll");
    one.area.Add("B", "EventMessageFile", "C:\\gone\\b.System32");
    one.area.Add("C", "EventMessageFile", "%SystemRoot%\\system32\\vellumor-gone.dll");
    one.area.Add("D", "EventMessageFile", "%SystemRoot%\\SYSTEM32\\vellumor-gone.dll");
    one.area.Add("E", "EventMessageFile", "%SystemRoot%\\system32\\kernel32.dll");
    CHECK(RowsOf(&CheckServicesAndEventLogs) ==
          Lines({one.area.Timed("C", "EventMessageFile", "%SystemRoot%\\system32\\vellumor-gone.dll"),
                 one.area.Timed("D", "EventMessageFile", "%SystemRoot%\\SYSTEM32\\vellumor-gone.dll")}));
}

TEST_CASE("a service's image is resolved in the ways of service images") {
    const CScratchFolder scratch;
    const std::string driver = scratch.AddFile("y.sys");
    OneArea one(HKEY_LOCAL_MACHINE, kServicesArea);
    one.area.Add("A", "ImagePath", "system32\\kernel32.dll");
    one.area.Add("B", "ImagePath", "system32\\drivers\\vellumor-gone.sys");
    one.area.Add("C", "ImagePath", "\\??\\" + driver);
    one.area.Add("D", "ImagePath", "\\??\\C:\\gone\\y.sys");
    one.area.Add("E", "ImagePath", "\\SystemRoot\\System32\\kernel32.dll");
    CHECK(RowsOf(&CheckServicesAndEventLogs) ==
          Lines({one.area.Timed("B", "ImagePath", "system32\\drivers\\vellumor-gone.sys"),
                 one.area.Timed("D", "ImagePath", "\\??\\C:\\gone\\y.sys")}));
}

TEST_CASE("event logs, services and trust packages are examined in this order, each by itself") {
    CScratchRegistry registry;
    CScratchArea application(registry, HKEY_LOCAL_MACHINE, kApplicationLogArea);
    CScratchArea services(registry, HKEY_LOCAL_MACHINE, kServicesArea);
    CScratchArea system(registry, HKEY_LOCAL_MACHINE, kSystemLogArea);
    CScratchArea trust(registry, HKEY_LOCAL_MACHINE, kTrustArea);
    application.Add("Z", "EventMessageFile", "C:\\gone\\1.dll");
    services.Add("Z", "ImagePath", "C:\\gone\\2.sys");
    system.Add("A", "EventMessageFile", "C:\\gone\\3.dll");
    trust.Add("A", "$DLL", "C:\\gone\\4.dll");
    const std::string first = application.Timed("Z", "EventMessageFile", "C:\\gone\\1.dll");
    const std::string second = services.Timed("Z", "ImagePath", "C:\\gone\\2.sys");
    const std::string third = system.Timed("A", "EventMessageFile", "C:\\gone\\3.dll");
    const std::string fourth = trust.Timed("A", "$DLL", "C:\\gone\\4.dll");
    CHECK(RowsOf(&CheckServicesAndEventLogs) == Lines({first, second, third, fourth}));
    registry.MakeReadOnly(application.Key());
    CHECK(RowsOf(&CheckServicesAndEventLogs) == Lines({second, third, fourth}));
    registry.MakeReadOnly(services.Key());
    registry.MakeReadOnly(system.Key());
    CHECK(RowsOf(&CheckServicesAndEventLogs) == Lines({fourth}));
}

TEST_CASE("of a macro only the default value counts") {
    OneArea one(HKEY_LOCAL_MACHINE, kMacrosArea);
    one.area.Add("A", "", "%windir%\\notepad.exe", REG_EXPAND_SZ);
    one.area.Add("A", "Other", "C:\\gone\\a.htt");
    one.area.Add("B", "", "C:\\gone\\b.htt");
    one.area.Add("B", "Other", "C:\\gone\\c.htt");
    CHECK(RowsOf(&CheckTemplateMacros) == Lines({one.area.Timed("B", "", "C:\\gone\\b.htt")}));
}
