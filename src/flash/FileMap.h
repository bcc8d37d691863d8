#pragma once
// What a flash file holds, by address, and what is odd about the order of its records.

#include <array>
#include <bitset>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "flash/RecordFile.h"

/// Addresses with data that nothing interrupts.
struct DataRange {
    std::uint64_t first, end;  // the end isn't included
};

class FileMap {
public:
    /// The data of the next record; where it lies over other data the later one counts.
    void Add(const DataRecord& record);

    /// In the order of their addresses; no two touch.
    std::vector<DataRange> Ranges() const;

    /// Bytes with data at addresses from `first` to ahead of `end`.
    std::int64_t BytesIn(std::int64_t first, std::int64_t end) const;

    /// The byte at an address; 0xFF, as erased memory, where there is none.
    std::uint8_t At(std::uint64_t address) const;

    /// The first address that was given two different contents.
    std::optional<std::uint64_t> Contradiction() const { return contradiction_; }
    /// The address of the first record that lies ahead of the one before it.
    std::optional<std::uint64_t> StepBack() const { return stepBack_; }

private:
    static constexpr std::uint64_t pageSize = 256;
    struct Page {
        std::array<std::uint8_t, pageSize> bytes{};
        std::bitset<pageSize> given;
    };

    std::map<std::uint64_t, Page> pages_;
    std::optional<std::uint64_t> contradiction_, stepBack_;
    std::optional<std::uint32_t> last_;  // where the record before began
};
