// The loader's notifications of the shared library: loading calls DllMain
// with reason 1 and unloading with reason 0.
#include "tmrdar/tmrdar.h"

namespace {

__attribute__((constructor)) void LIBRARY_LOADED() { DllMain(nullptr, 1, nullptr); }
__attribute__((destructor)) void LIBRARY_UNLOADED() { DllMain(nullptr, 0, nullptr); }

}  // namespace
