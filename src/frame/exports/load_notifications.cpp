// The loader's notifications of the shared library: loading calls DllMain
// with reason 1 and unloading with reason 0.
#include "frame/base/io_units.h"
#include "header/tide3_database_files.h"
#include "tmrdar/tmrdar.h"

namespace {

__attribute__((constructor)) void LIBRARY_LOADED() { DllMain(nullptr, 1, nullptr); }
// After the notification, the readers and units, which outlive the library's
// static objects for it, go too, so that unloading leaves nothing behind.
__attribute__((destructor)) void LIBRARY_UNLOADED() {
  DllMain(nullptr, 0, nullptr);
  tmrdar::header::RELEASE_READERS();
  tmrdar::IO_UNITS::RELEASE_UNITS();
}

}  // namespace
