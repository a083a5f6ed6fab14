#pragma once

#include <expat.h>

#include <cstddef>
#include <string_view>

namespace ambulet {

/// Observes the declarations in the prolog of a document, with handlers of expat.
class Declarations {
  public:
    /// Whether the declarations so far are plain. Plain declarations do not change the contents of
    /// start tags:
    /// - If there is an XML declaration, its version is 1.0, and it names no encoding but UTF-8.
    /// - There is no external subset, no entity, and no reference to a parameter entity.
    /// - No attribute has a default value.
    /// - All attributes have the type CDATA. Values of other types are normalised differently.
    bool arePlain() const { return _arePlain; }

    /// Whether more than `mostNestingEntities` entities refer to others. If so, the parser has been
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
