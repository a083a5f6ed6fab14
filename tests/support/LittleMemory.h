#pragma once

namespace ambulet {

/// Limits the memory of the threads other than the main one. While the object exists, they can
/// allocate memory `allocations` times in total; all later allocations fail. A test program that
/// uses it links LittleMemory.cpp. Only one object may exist at a time.
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
