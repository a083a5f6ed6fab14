#pragma once

#include <random>
#include <string>

namespace ambulet {

/// The approximate size of a mutant; up to twice as much in UTF-16.
enum class MutantSize {
    small,   // up to 20 KB
    medium,  // 30 to 300 KB
    large,   // 1 to 3 MB
    huge     // 4 to 20 MB, most of it long values
};

/// A random size: of 100,000 about 1,000 are medium, 100 large, and 4 huge.
MutantSize mutantSize(std::minstd_rand& chance);

/// A sample export with random changes. Some mutants are well-formed. There are mutants
/// - in UTF-16 of both byte orders, with and without a byte order mark, entirely or in part;
/// - with other prologs: simple, unusual or malformed ones, and nested entities;
/// - with one or many values of up to 500 KB, in ASCII and other characters;
/// - with tags, comments, "]]" and non-ASCII letters at the boundaries of blocks;
/// - damaged by `mutated`, and with something after the root.
std::string mutant(std::minstd_rand& chance, MutantSize size);

}  // namespace ambulet
