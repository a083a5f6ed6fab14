#pragma once

#include <random>
#include <string>

namespace ambulet {

/// How large a document becomes.
enum class MutantSize {
    small,   // some kilobytes
    medium,  // 30 to 300 KB
    large,   // 1 to 3 MB
    huge     // 4 to 20 MB, most of it long values
};

/// Of a hundred thousand documents about a thousand are medium, a hundred large, four huge.
MutantSize mutantSize(std::minstd_rand& chance);

/// A document made of a sample export, as chance has it; some are well-formed. Among them are those
/// - in UTF-16 of both byte orders, with and without a byte order mark, whole or in part;
/// - with other prologs, plain, tricky and malformed, and with nested entities;
/// - with values of up to 300 KB, one or many, in ASCII and beyond;
/// - with markup, "]]", letters beyond ASCII, tags and comments at the edges of blocks;
/// - spoilt by `mutated`, and with something after the root.
std::string mutant(std::minstd_rand& chance, MutantSize size);

}  // namespace ambulet
