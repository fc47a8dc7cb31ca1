// Takes any text for a hive's name, a backup file's name and a device path, and checks where each leads.
#include "hives/hive_list_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

void CheckBackupOf(const HiveKey& hive) {
    Require(!hive.subkey.empty(), "a hive is below its root");
    const std::optional<std::string> file = BackupFileName(hive);
    if (!file) return;
    Require(file->find_first_of("\\/") == std::string::npos, "a backup file is in its folder");
    Require(HiveOfBackupFile(*file) == hive, "a backup file leads back to its hive");
}

void CheckFileName(std::string_view name) {
    const std::optional<HiveKey> hive = HiveOfBackupFile(name);
    if (!hive) return;
    Require(WithEnding(name, name.substr(name.size() - 4)) == name, "an ending can be put back");
    CheckBackupOf(*hive);
}

void CheckDevicePath(std::string_view path, std::string_view device) {
    const std::optional<std::string> file = DevicePathAsFilePath(path, device, "C:");
    if (!file) return;
    Require(!device.empty(), "without a device no file has a path");
    Require(file->starts_with("C:\\"), "a file path is a full one");
    Require(file->substr(2) == path.substr(device.size()), "what is behind the device stays");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::uint8_t choice = input.TakeByte();
    const std::string device = input.TakeText();
    std::string text(input.Rest());
    // What chance does not spell at the front of most texts.
    const std::string fronts[] = {R"(\REGISTRY\MACHINE\)", R"(\REGISTRY\USER\)", "MACHINE.", "USER.",
                                  device + "\\"};
    if (choice < std::size(fronts)) text = fronts[choice] + text;
    if (choice == 2 || choice == 3) text += ".bck";

    const CExactBuffer block = CExactBuffer::Unterminated(text);
    if (const std::optional<HiveKey> hive = ParseHiveName(block.View())) CheckBackupOf(*hive);
    CheckFileName(block.View());
    CheckDevicePath(block.View(), device);
    return 0;
}
