#pragma once

// Type codes of station items, as the host reports them through HostItem::type().
namespace ItemType {
constexpr int Robot = 2;
constexpr int Target = 6;
constexpr int Program = 8;
}  // namespace ItemType
