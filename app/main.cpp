#include <windows.h>

#include <cstdlib>

#include "app/vellumor_app.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    CVellumorApp app;
    return app.InitInstance() ? app.Run() : EXIT_FAILURE;
}
