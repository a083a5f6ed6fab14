#pragma once

#include <expat.h>

#include <cstddef>
#include <string_view>

namespace ambulet {

/// Observes the declarations in the prolog of a document, by handlers of expat.
class Declarations {
  public:
    /// Whether the document is plain so far: it is XML 1.0, it declares UTF-8 or no encoding, and
    /// it does not declare anything that changes the contents of start tags:
    /// - no entity,
    /// - no attribute with a default value,
    /// - no attribute of a type whose values are normalised differently,
    /// - no external subset or parameter entity that could declare these.
    bool arePlain() const { return _arePlain; }

    /// Whether more than `mostNestingEntities` entities refer to others. If so, the parser was
    /// stopped.
    bool nestTooDeeply() const { return _nestingEntities > mostNestingEntities; }

    /// Whether the document type declaration has ended.
    bool haveEnded() const { return _haveEnded; }

    /// Expat 2.5 reads nested entities by recursion, with up to 370 bytes of stack per level
    /// (measured). Entities cannot be nested more deeply than the number of entities that refer to
    /// others. This number of levels needs less than half of a stack of 512 KB, the usual size for
    /// threads on macOS. Real exports have no such entities.
    static constexpr std::size_t mostNestingEntities = 500;

  protected:
    /// Sets the handlers of `parser`, and its user data to this object. Call it once.
    void watch(XML_Parser parser);

  private:
    void addEntity(std::string_view value, bool isParameter);

    XML_Parser _parser = nullptr;
    bool _arePlain = true;
    bool _haveEnded = false;
    std::size_t _nestingEntities = 0;
};

}  // namespace ambulet
