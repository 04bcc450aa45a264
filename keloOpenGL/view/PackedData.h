#pragma once

#include "base/Assertion.h"

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

namespace kelo {

/// Values packed as bytes, in which view state crosses the views' interfaces so that a subclass or
/// a host can store and compare it without knowing what is in it. Native byte order:
///
/// | data                           | bytes | content                                             |
/// |--------------------------------|-------|-----------------------------------------------------|
/// | world centre, rotation centre  | 12    | three floats x, y, z                                |
/// | zoom                           | 32    | four doubles xMin, xMax, yMin, yMax                 |
/// | world rotation                 | 16    | four floats: angle in degrees, axis x, y, z         |
using PackedData = std::vector<std::byte>;

template<class Value>
PackedData packed(const Value &value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    PackedData data(sizeof(Value));
    std::memcpy(data.data(), &value, sizeof(Value));
    return data;
}

/// `data` must be exactly as long as a Value, or an AssertionFailure is thrown: it may come from a
/// subclass or a host.
template<class Value>
Value unpacked(const PackedData &data)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    assertThat(data.size() == sizeof(Value), "packed data must be as long as what is packed in it");
    Value value;
    std::memcpy(&value, data.data(), sizeof(Value));
    return value;
}

} // namespace kelo
