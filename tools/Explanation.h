#ifndef KIVFISHEYE_TOOLS_EXPLANATION_H
#define KIVFISHEYE_TOOLS_EXPLANATION_H

#include "ViewFacts.h"

namespace KivFisheyeTools {

/// Lines that say in words and numbers what a view shows, and after them a line for each warning.
std::string Explained(const ViewFacts& facts);

/// What may surprise in it, each without the word "warning".
std::vector<std::string> WarningsAbout(const ViewFacts& facts);

}  // namespace KivFisheyeTools

#endif
