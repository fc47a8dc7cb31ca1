#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include "tests/faults/fault.h"

int main(int count, char** arguments) {
    HookLookups();
    return doctest::Context(count, arguments).run();
}
