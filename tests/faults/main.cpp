#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include "tests/faults/fault.h"

int main(int count, char** arguments) {
    HookLookups();
    // Where this program's folder is not known, files go to the root of the drive: not to that of the host.
    if (::SetCurrentDirectoryA("C:\\") == FALSE) return 1;
    return doctest::Context(count, arguments).run();
}
