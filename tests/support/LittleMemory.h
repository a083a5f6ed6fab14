#pragma once

namespace ambulet {

/// Limits the memory of all threads except the main thread. While the object exists, `allocations`
/// calls of operator new and aligned_alloc by these threads succeed, and all later ones fail. Test
/// programs that use this class link LittleMemory.cpp. Only one object may exist at a time.
class LittleMemory {
  public:
    explicit LittleMemory(int allocations);
    ~LittleMemory();
    LittleMemory(const LittleMemory&) = delete;
    LittleMemory& operator=(const LittleMemory&) = delete;

    /// Whether an allocation has failed.
    bool hasFailed() const;
};

}  // namespace ambulet
