#pragma once

namespace KrCore::BucketLoad {

// When the tables of chained buckets grow and shrink.

/// Items per hundred buckets, rounded down. In 32 bits it would overflow at 21 million items.
inline int percentInUse(int items, int buckets) {
    return static_cast<int>(static_cast<long long>(items) * 100 / buckets);
}

inline bool isHigh(int items, int buckets) { return percentInUse(items, buckets) > 50; }
inline bool isLow(int items, int buckets) { return percentInUse(items, buckets) < 30; }

} // namespace KrCore::BucketLoad
