#pragma once

#include "batch/run.h"
#include "batch/services.h"

namespace tarnwick::batch {

class LevelBoxes;
class Trace;

// The steps that work on the whole sound in EDTX. Both procedures are guarded. UI thread.
class Filters {
  public:
    Filters(Run& run, const Services& services, Trace& trace, const LevelBoxes& levels);

    // Sets the highest peak to the requested maximum.
    void EDTX_Normalize();
    // There is no such filter: the step starts nothing, so the chain ends there.
    void Hiss_Filter();

  private:
    Run& run_;
    const Services& services_;
    Trace& trace_;
    const LevelBoxes& levels_;
};

}  // namespace tarnwick::batch
