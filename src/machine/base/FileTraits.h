// What a file has apart from its content: who owns it, who may do what with it, its extended
// attributes, among them the access list and the attributes that drivers of NTFS show.
#ifndef ZELVREG_MACHINE_BASE_FILE_TRAITS_H
#define ZELVREG_MACHINE_BASE_FILE_TRAITS_H

namespace zelvreg::machine {

// Gives one open file what another has, and its time of creation where the disk lets it be set: a
// name that goes on to stand for the same thing. 0, or the error number of the first trait that
// cannot be given; the owner, and the traits that only the system's own programs may set, are given
// where that is allowed.
int copyTraits(int from, int to);

// Gives the times of the last write and the last use, as of a copy that stands for the original.
int copyTimes(int from, int to);

}  // namespace zelvreg::machine

#endif
