// The loader's notifications of the DLL. Windows calls DllMain itself, through
// the runtime's entry point, with reason 1 at process attach and 0 at detach;
// the runtime's start-up code runs the DLL's static constructors before the
// attach and its destructors after the detach. There, once XIT has run, the
// readers and units go too, so that unloading leaves nothing behind.
#include "frame/base/io_units.h"
#include "header/format_reader.h"

namespace {

struct ReleaseAtUnload {
  ReleaseAtUnload() = default;
  ReleaseAtUnload(const ReleaseAtUnload&) = delete;
  ReleaseAtUnload& operator=(const ReleaseAtUnload&) = delete;
  ~ReleaseAtUnload() {
    tmrdar::header::release_readers();
    tmrdar::io_units::release_units();
  }
};

const ReleaseAtUnload release_at_unload;

}  // namespace
