// The steps of smooth scrolling: how far the first shown line moves on each tick towards where it is to be.
// Pure.
#pragma once

namespace quillet {

// The next first line of an article: `top` moved towards `target`, which it reaches after a few steps.
int ScrollAnimationStep(int top, int target);

// The same for a side list.
int SideListScrollStep(int first, int target);

}  // namespace quillet
