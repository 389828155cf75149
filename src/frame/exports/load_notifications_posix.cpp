// The loader's notifications of the shared library: loading calls DllMain
// with reason 1 and unloading with reason 0.
#include "frame/base/io_units.h"
#include "header/format_reader.h"
#include "tmrdar/tmrdar.h"

namespace {

__attribute__((constructor)) void library_loaded() { DllMain(nullptr, 1, nullptr); }
// After the notification, the readers and units, which outlive the library's
// static objects for it, go too, so that unloading leaves nothing behind.
__attribute__((destructor)) void library_unloaded() {
  DllMain(nullptr, 0, nullptr);
  tmrdar::header::release_readers();
  tmrdar::io_units::release_units();
}

}  // namespace
