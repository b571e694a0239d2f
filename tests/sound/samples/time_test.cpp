#include "sound/samples/time.h"

// Checked at compile time.

namespace tarnwick::sound {
namespace {

static_assert(frameAt(1, 500) == 0 && frameAt(3, 500) == 2 && frameAt(1500, 44100) == 66150);
static_assert(frameAt(5, 44100) == 220 && frameAt(15, 44100) == 662);  // 220.5, 661.5: to even
static_assert(frameFloor(1, 44100) == 44 && frameFloor(10, 44100) == 441);
static_assert(frameCeil(1, 44100) == 45 && frameCeil(10, 44100) == 441);
static_assert(msFloor(44099, 44100) == 999 && msCeil(44099, 44100) == 1000);
static_assert(msFloor(44100, 44100) == 1000 && msCeil(44100, 44100) == 1000);
static_assert(msCeil(6, 7) == 858);

}  // namespace
}  // namespace tarnwick::sound
