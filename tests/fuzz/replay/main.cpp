// Runs a fuzz target over the inputs that are kept for it, with any compiler.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int main(int count, char** arguments) {
    if (count != 2) {
        std::puts("usage: replay_TARGET FOLDER");
        return 2;
    }
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        // A block with not one byte to spare, so that a read past the input is found.
        const std::vector<char> text(std::istreambuf_iterator<char>(file), {});
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        std::printf("%s\n", entry.path().filename().c_str());
        std::fflush(stdout);
        (void)LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        ++inputs;
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
