#pragma once

#include <expat.h>

#include <cstddef>
#include <string_view>

namespace ambulet {

/// Observes the declarations in the prolog of a document, by handlers of expat.
class Declarations {
  public:
    /// Whether the document is plain so far. A plain document is XML 1.0, declares UTF-8 or no
    /// encoding, and declares nothing that could change the contents of start tags, that is, none
    /// of
    /// - an entity,
    /// - an attribute with a default value,
    /// - an attribute of a type other than CDATA, because its values are normalised differently,
    /// - an external subset or a parameter entity, which could declare these.
    bool arePlain() const { return _arePlain; }

    /// Whether more than `mostNestingEntities` entities refer to others. If so, the parser was
    /// stopped.
    bool nestTooDeeply() const { return _nestingEntities > mostNestingEntities; }

    /// Whether the document type declaration has ended.
    bool haveEnded() const { return _haveEnded; }

    /// Expat 2.5 reads nested entities by recursion, with up to 370 bytes of stack per level
    /// (measured). The depth is limited by the number of entities that refer to others. 500 levels
    /// need less than half of a stack of 512 KB, the usual size for threads on macOS. Real exports
    /// have no such entities.
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
