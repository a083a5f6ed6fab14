#pragma once

#include <expat.h>

#include <cstddef>
#include <string_view>

namespace ambulet {

/// Watches what the prolog of a document declares, through handlers of expat's.
class Declarations {
  public:
    /// Whether the document is XML 1.0, in UTF-8 as far as its declaration says, and nothing is
    /// declared that makes a difference to what a start tag holds: no entity, no attribute with a
    /// default, none whose value is normalised further than that of others, and nothing outside
    /// the document that could declare such. True as long as nothing of that has been seen.
    bool arePlain() const { return _arePlain; }

    /// Whether so many entities are declared that refer to others that their nesting could overflow
    /// a thread's stack. The parser was stopped there.
    bool nestTooDeeply() const { return _nestingEntities > mostNestingEntities; }

    /// Whether the document type declaration has ended.
    bool haveEnded() const { return _haveEnded; }

    /// Expat 2.5 reads an entity within an entity by recursion, of up to 370 bytes a level
    /// (measured). A chain of entities is no longer than the number of entities that refer to
    /// others, so those are counted. As many as this take less than half of the smallest stack that
    /// a thread has, 512 KB; real exports have none.
    static constexpr std::size_t mostNestingEntities = 500;

  protected:
    /// Sets the handlers of `parser`, and a pointer to this as its user data. Once.
    void watch(XML_Parser parser);

  private:
    void addEntity(std::string_view value, bool isParameter);

    XML_Parser _parser = nullptr;
    bool _arePlain = true;
    bool _haveEnded = false;
    std::size_t _nestingEntities = 0;
};

}  // namespace ambulet
