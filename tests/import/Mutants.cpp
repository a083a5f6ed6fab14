#include "import/Mutants.h"

#include "import/Mutations.h"
#include "import/Reading.h"
#include "import/SampleExports.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

namespace ambulet {

// A document is changed in steps, each of which may be skipped:
// 1. more content
// 2. another prolog
// 3. markup at the boundary of a block
// 4. damage
// 5. something after the root
// 6. another encoding

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

/// Random choices.
class Dice {
  public:
    explicit Dice(std::minstd_rand& chance) : _chance(chance) {}

    std::size_t upTo(std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(0, most)(_chance);
    }
    bool oneIn(std::size_t times) { return upTo(times - 1) == 0; }

    template <typename List>
    const auto& oneOf(const List& list) {
        return list[upTo(std::size(list) - 1)];
    }
    double oneOf(std::initializer_list<double> list) {
        return std::data(list)[upTo(list.size() - 1)];
    }

    /// A number from `least` to `most`. Its logarithm is uniformly distributed.
    std::size_t length(std::size_t least, std::size_t most) {
        std::uniform_real_distribution<double> power(std::log2(static_cast<double>(least)),
                                                     std::log2(static_cast<double>(most)));
        return static_cast<std::size_t>(std::exp2(power(_chance)));
    }

    std::minstd_rand& chance() { return _chance; }

  private:
    std::minstd_rand& _chance;
};

/// Repeats `text` until there are at least `size` bytes.
std::string repeated(std::string_view text, std::size_t size) {
    std::string result;
    while (result.size() < size) {
        result += text;
    }
    return result;
}

/// The offset of the root's start tag; that of the end if there is none.
std::size_t rootBegin(const std::string& bytes) {
    std::size_t at = bytes.find('<');
    while (at != std::string::npos && at + 1 < bytes.size() &&
           std::isalpha(static_cast<unsigned char>(bytes[at + 1])) == 0) {
        at = bytes.find('<', at + 1);
    }
    return std::min(at, bytes.size());
}

std::size_t contentBegin(const std::string& bytes) {
    const std::size_t end = bytes.find('>', rootBegin(bytes));
    return end == std::string::npos ? bytes.size() : end + 1;
}

std::size_t contentEnd(const std::string& bytes) {
    const std::size_t end = bytes.rfind("</");
    return end == std::string::npos ? bytes.size() : std::max(end, contentBegin(bytes));
}

// More content.

constexpr std::string_view fillings[] = {"x",          "0123456789",
                                         "\u00E4",     "\u20AC",
                                         "\U0001F45F", "Zo\u00EB\u2019s Phone ",
                                         "&amp;",      "&#228;",
                                         "a&lt;b",     " ",
                                         "\n",         "\t\r\n",
                                         "]",          "'",
                                         "\u00E4x",    "x\u20AC\U0001F45F",
                                         "=",          ">"};

/// A tag with values of up to `longest` bytes.
std::string tagOfLongValues(Dice& dice, std::size_t longest) {
    std::string tag = dice.oneIn(4) ? "<Note" : '<' + stepAttributes(noon9, "1");
    const std::size_t count = dice.oneIn(3) ? dice.upTo(6) + 1 : 1;
    for (std::size_t number = 0; number < count; ++number) {
        tag += " a" + std::to_string(number) + "=\"" +
               repeated(dice.oneOf(fillings), dice.length(2, longest)) + '"';
    }
    return tag + "/>\n";
}

/// Adds content to `bytes` until there are at least `size` bytes.
std::string enlarged(const std::string& bytes, Dice& dice, std::size_t size) {
    const std::size_t begin = contentBegin(bytes);
    const std::string content = bytes.substr(begin, contentEnd(bytes) - begin);
    const std::string end = bytes.substr(begin + content.size());
    const std::size_t longest = std::max<std::size_t>(size / 8, 100);
    std::string result = bytes.substr(0, begin);
    while (result.size() < size) {
        switch (dice.upTo(30)) {
        case 0:
            result += tagOfLongValues(dice, std::min<std::size_t>(longest, 300'000));
            break;
        case 1:
            result +=
                "<Note>" + repeated(dice.oneOf(fillings), dice.length(2, longest)) + "</Note>";
            break;
        case 2:
            result += "<!--" + repeated(dice.oneOf(fillings), dice.length(2, longest)) + "-->";
            break;
        case 3:
            result += repeated(step(noon10, std::to_string(dice.upTo(20'000))),
                               dice.length(100, longest));
            break;
        default:
            result += content;
            result += step(noon10, std::to_string(dice.upTo(20'000)));
        }
    }
    return result + end;
}

/// The lengths of the values of a tag. They add up to about `size`. If `ratio` is 1, they are
/// random. Otherwise they are a geometric sequence with that ratio, rotated by `first`.
std::vector<std::size_t> valueLengths(Dice& dice, std::size_t size, std::size_t first,
                                      double ratio) {
    constexpr std::size_t count = 120;
    std::vector<std::size_t> lengths;
    if (ratio == 1) {
        for (std::size_t room = size; room > 100 && lengths.size() < count;) {
            lengths.push_back(dice.upTo(dice.oneIn(3) ? room : std::min(room, size / 8)));
            room -= lengths.back();
        }
        return lengths;
    }
    const double sum = (std::pow(ratio, count) - 1) / (ratio - 1);
    for (std::size_t number = 0; number < count; ++number) {
        const auto power = static_cast<double>((number + first) % count);
        lengths.push_back(
            static_cast<std::size_t>(static_cast<double>(size) * std::pow(ratio, power) / sum) + 1);
    }
    return lengths;
}

/// Adds many tags with long values, which grow from tag to tag up to a limit. Expat stores the
/// values of a tag in blocks, reuses these blocks for later tags, and allocates more if a value
/// does not fit.
std::string withManyLongValues(const std::string& bytes, Dice& dice, std::size_t size) {
    const std::size_t end = contentEnd(bytes);
    const std::size_t longest = dice.oneIn(2) ? 500'000 : dice.length(100'000, 500'000);
    const double ratio = dice.oneIn(4) ? 1 : dice.oneOf({1.05, 1.1});
    const std::size_t turn = dice.upTo(1) + 1;
    const double growth = dice.oneOf({1.1, 1.15, 1.2});
    const std::string_view filling = dice.oneIn(4) ? dice.oneOf(fillings) : "x"sv;
    std::string result = bytes.substr(0, end);
    double tagSize = 1'000;
    for (std::size_t tag = 0; result.size() < size; ++tag) {
        result += "<Note";
        std::size_t number = 0;
        for (const std::size_t length :
             valueLengths(dice,
                          dice.length(static_cast<std::size_t>(tagSize / 2),
                                      static_cast<std::size_t>(tagSize)),
                          tag * turn, ratio)) {
            result += " a" + std::to_string(number++) + "=\"" + repeated(filling, length) + '"';
        }
        result += "/>";
        tagSize = std::min(tagSize * growth, static_cast<double>(longest));
    }
    return result + bytes.substr(end);
}

// Another prolog.

constexpr std::string_view declarations[] = {"",
                                             "<?xml version='1.0'?>",
                                             "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n",
                                             "<?xml version='1.0' standalone='yes'?>",
                                             "<?xml version='1.0' standalone='no'?>",
                                             "<?xml version='1.1'?>",
                                             "<?xml version='1.0' encoding='US-ASCII'?>",
                                             "<?xml version='1.0' encoding='ISO-8859-1'?>",
                                             "<?xml version='1.0' encoding='windows-1252'?>",
                                             "<?xml version='1.0' encoding='Shift_JIS'?>",
                                             "<?xml version='1.0' encoding='UTF-16'?>",
                                             "\xEF\xBB\xBF",
                                             "\n",
                                             "<!-- a --><?b c?>\n"};

constexpr std::string_view inDoctypes[] = {
    "",
    "<!ENTITY a 'b'>",
    "<!ENTITY a '<Record/>'>",
    "<!ENTITY a SYSTEM 'b'>",
    "<!ENTITY a SYSTEM 'b' NDATA c><!NOTATION c SYSTEM 'd'>",
    "<!ENTITY % a '<!ENTITY b \"c\">'>%a;",
    "%a;",
    "%a;<!ATTLIST Record value CDATA '3'>",
    "<!ATTLIST Record type CDATA 'HKQuantityTypeIdentifierStepCount'>",
    "<!ATTLIST Record type NMTOKEN #IMPLIED value NMTOKENS #IMPLIED>",
    "<!ATTLIST Record unit (count|km) 'count'>",
    "<!ATTLIST Record value CDATA #FIXED '3'>",
    "<!ATTLIST Record type CDATA #REQUIRED>",
    "<!ELEMENT HealthData ANY>",
    "<!ELEMENT Record EMPTY",
    "<!-- ]> -->",
    "<!-- <HealthData> ",
    " ' ",
    " ]> \" ",
    "<?a ]> ?>",
    "<![INCLUDE[<!ENTITY a 'b'>]]>",
    "&a;",
    "\v",
    "\xC3"};

/// Declarations of general or parameter entities, each of which refers to the next one, except the
/// last.
std::string nestedEntities(Dice& dice) {
    const bool isParameter = dice.oneIn(3);
    const std::size_t levels = dice.length(2, 700);
    std::string result;
    for (std::size_t level = 0; level < levels; ++level) {
        result += "<!ENTITY "s + (isParameter ? "% " : "") + 'e' + std::to_string(level) + " '" +
                  (isParameter ? "&#37;" : "&") + 'e' + std::to_string(level + 1) + ";'>";
    }
    return result + "<!ENTITY " + (isParameter ? "% " : "") + 'e' + std::to_string(levels) +
           (isParameter ? " ''>%e0;" : " '1'>");
}

std::string withProlog(const std::string& bytes, Dice& dice) {
    const std::size_t root = rootBegin(bytes);
    const std::size_t nameEnd = std::min(bytes.find_first_of(" \t\r\n/>", root), bytes.size());
    std::string result(dice.oneOf(declarations));
    const bool nests = dice.oneIn(4);
    if (!dice.oneIn(3)) {
        result += "<!DOCTYPE " + bytes.substr(root + 1, nameEnd - root - 1) +
                  (dice.oneIn(8) ? " SYSTEM 'a.dtd'" : "") + " [";
        for (std::size_t count = dice.upTo(2) + 1; count > 0; --count) {
            result += dice.oneOf(inDoctypes);
        }
        result += nests ? nestedEntities(dice) : "";
        result += dice.oneIn(8) ? "" : "]>";
    }
    result += bytes.substr(root);
    if (nests || dice.oneIn(3)) {
        const std::string reference = nests ? "&e0;" : "&a;";
        const std::size_t begin = contentBegin(result);
        const std::size_t value = result.find("=\"", begin);
        result.insert(dice.oneIn(2) || value == std::string::npos ? begin : value + 2, reference);
    }
    return result;
}

// Markup at the boundary of a block.

constexpr std::string_view edgePieces[] = {"]]",
                                           "]]>",
                                           "]",
                                           "\u00E4",
                                           "\u20AC",
                                           "\U0001F45F",
                                           "<!-- a -->",
                                           "<!-- -->",
                                           "<a/>",
                                           "<a>b</a>",
                                           "</a>",
                                           "<a",
                                           "<",
                                           "&amp;",
                                           "&#10;",
                                           "<![CDATA[ ]]]]>",
                                           "<?a b?>",
                                           "\r\n",
                                           "<Record value=\"1\"/>",
                                           "\xC3",
                                           "\xF0\x9F",
                                           "-->",
                                           "<!--",
                                           "\"",
                                           "'",
                                           "<a b='\u00E4\u20AC'/>",
                                           "\xEF\xBB\xBF"};

constexpr std::size_t blockSizes[] = {7,    50,   61,     64,     100,     512,     700,
                                      4096, 4099, 32'768, 65'536, 262'144, 524'288, 1'048'576};

/// Inserts a piece of markup or text at the boundary of a block, or a few bytes before. If a tag of
/// the content ends before that place, the piece is inserted after the tag, behind padding that
/// ends at the place. Blocks are counted from the start of the document or of the content.
void putAtEdge(std::string& bytes, Dice& dice) {
    const std::size_t size = dice.oneOf(blockSizes);
    const std::size_t origin = dice.oneIn(2) ? 0 : contentBegin(bytes);
    if (origin + size >= bytes.size()) {
        return;
    }
    const std::string_view piece = dice.oneOf(edgePieces);
    const std::size_t edge = origin + size * (dice.upTo((bytes.size() - origin) / size - 1) + 1);
    const std::size_t begin = edge - std::min(edge, dice.upTo(piece.size() + 1));
    const std::size_t after = bytes.rfind('>', begin);
    if (after == std::string::npos || after < contentBegin(bytes) || after >= begin) {
        bytes.insert(begin, piece);
        return;
    }
    const std::string padding(begin - after - 1, dice.oneIn(2) ? ' ' : 'x');
    bytes.insert(after + 1, padding + std::string(piece));
}

// Something after the root.

constexpr std::string_view tails[] = {
    "]]",        "]",       "\xC3",        "\xE2\x82", "\xF0\x9F",     "junk",
    "j]]",       "j\xC3",   "\n]]",        "\r",       "\n\xC3",       "<!-- a -->",
    "<!-- \xC3", "<?a?>]]", "<a/>",        "&",        "%a;",          "\"",
    "j=\"\"",    "<",       "<!",          "\u00E4",   "\u00E4\xC3",   "<![CDATA[]]>",
    "]]>",       "\v",      "j\u20AC\xE2", "'",        "\xEF\xBB\xBF", "</a>"};

// Another encoding.

std::string inUtf16(std::string_view bytes, bool isBigEndian) {
    std::string result;
    for (const char character : bytes) {
        result += isBigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    }
    return result;
}

/// Encodes in UTF-16 either all of `bytes`, or only the parts before and after the content. In the
/// second case, a reader takes every two bytes of the content for one UTF-16 unit, and there may be
/// no prolog.
std::string asUtf16(const std::string& bytes, Dice& dice) {
    const bool isBigEndian = dice.oneIn(2);
    std::string mark;
    if (dice.oneIn(2)) {
        mark = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    }
    if (dice.oneIn(2)) {
        return mark + inUtf16(bytes, isBigEndian);
    }
    const std::size_t root = dice.oneIn(2) ? rootBegin(bytes) : 0;
    const std::size_t begin = contentBegin(bytes);
    const std::size_t end = contentEnd(bytes);
    std::string content = bytes.substr(begin, end - begin);
    content.append(content.size() % 2, '\n');
    return mark + inUtf16(std::string_view(bytes).substr(root, begin - root), isBigEndian) +
           content + inUtf16(std::string_view(bytes).substr(end), isBigEndian);
}

std::string sampleOf(Dice& dice, MutantSize size) {
    const std::string sample = dice.oneOf(sampleExports());
    switch (size) {
    case MutantSize::medium:
        return enlarged(sample, dice, dice.length(30'000, 300'000));
    case MutantSize::large:
        return enlarged(sample, dice, dice.length(1'000'000, 3'000'000));
    case MutantSize::huge:
        return withManyLongValues(sample, dice, dice.length(4'000'000, 20'000'000));
    case MutantSize::small:
        break;
    }
    return dice.oneIn(20) ? enlarged(sample, dice, dice.length(1'000, 20'000)) : sample;
}

}  // namespace

MutantSize mutantSize(std::minstd_rand& chance) {
    const std::size_t number = Dice(chance).upTo(99'999);
    return number < 4       ? MutantSize::huge
           : number < 100   ? MutantSize::large
           : number < 1'100 ? MutantSize::medium
                            : MutantSize::small;
}

std::string mutant(std::minstd_rand& chance, MutantSize size) {
    Dice dice(chance);
    std::string bytes = sampleOf(dice, size);
    if (dice.oneIn(4)) {
        bytes = withProlog(bytes, dice);
    }
    for (std::size_t times = dice.oneIn(2) ? dice.upTo(3) : 0; times > 0; --times) {
        putAtEdge(bytes, dice);
    }
    if (dice.oneIn(2)) {
        bytes = mutated(std::move(bytes), chance);
    }
    if (dice.oneIn(8)) {
        bytes += dice.oneOf(tails);
    }
    return dice.oneIn(8) ? asUtf16(bytes, dice) : bytes;
}

}  // namespace ambulet
