#pragma once

namespace tarnwick {

/// Lets the memory of every picture go back to the system when it is freed. glibc would learn from the first
/// one to keep all later ones of its size in its own heap, where they leave holes: half of the program's
/// memory after a few albums. Does nothing where the C library is another. To be called before the first
/// picture.
void giveFreedPicturesBack();

/// Gives back what lies free in the heap now, as after a start. A millisecond or two.
void giveFreedMemoryBack();

} // namespace tarnwick
