#pragma once

namespace ambulet {

/// If a test program links LittleMemory.cpp: as long as the object exists, all threads but the main
/// one together can allocate memory `allocations` times. Then their allocations fail. Only one
/// object may exist at a time.
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
