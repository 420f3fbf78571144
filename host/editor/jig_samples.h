// What a jig was given and showed. Each point, distance or angle the user
// gives at a drag prompt is a sample; the samples of the jig made last are
// kept, so that tests (and the console) can see what its entity drew
// although it never entered a database.
#pragma once

#include <vector>

#include "gi/picture.h"

namespace kelhost::editor {

struct JigSample {
  int status = 0;        // what sampler() answered (an AcEdJig::DragStatus)
  bool updated = false;  // update() ran for it
  gi::Picture picture;   // what entity() drew (nothing when it was not shown)
};

// The samples of the latest jig, in order; a new jig starts afresh.
const std::vector<JigSample>& JigSamples();

}  // namespace kelhost::editor
