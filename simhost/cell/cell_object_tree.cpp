// The broad phase: a tree of the objects' bounding boxes.
#include "cell_object_tree.h"

#include <algorithm>
#include <cmath>
#include <limits>

Aabb Aabb::around(const PlacedSolid& solid)
{
    // Half the solid's shadow on each world axis.
    const Eigen::Matrix3d& r = solid.world.linear();
    Eigen::Vector3d half;
    for (int i = 0; i < 3; ++i) {
        switch (solid.kind()) {
        case Solid::Kind::Box:
            half[i] = 0.5 * r.row(i).cwiseAbs().dot(solid.solid->size);
            break;
        case Solid::Kind::Cylinder:
            half[i] = std::abs(r(i, 2)) * solid.halfLength() +
                      solid.solid->radius * std::sqrt(std::max(0.0, 1.0 - r(i, 2) * r(i, 2)));
            break;
        case Solid::Kind::Capsule:
            half[i] = std::abs(r(i, 2)) * solid.halfLength() + solid.solid->radius;
            break;
        case Solid::Kind::Sphere:
            half[i] = solid.solid->radius;
            break;
        }
    }
    return Aabb{solid.centre() - half, solid.centre() + half};
}

Aabb Aabb::merged(const Aabb& other) const
{
    return Aabb{lower.cwiseMin(other.lower), upper.cwiseMax(other.upper)};
}

namespace {

Aabb around(const std::vector<Aabb>& boxes, const std::vector<int>& items, size_t begin, size_t end)
{
    Aabb box = boxes[size_t(items[begin])];
    for (size_t i = begin + 1; i < end; ++i)
        box = box.merged(boxes[size_t(items[i])]);
    return box;
}

double area(const std::vector<Aabb>& boxes, const std::vector<int>& items, size_t begin, size_t end)
{
    const Aabb box = around(boxes, items, begin, end);
    const Eigen::Vector3d size = box.upper - box.lower;
    return size.x() * size.y() + size.y() * size.z() + size.z() * size.x();
}

}  // namespace

ObjectTree::ObjectTree(const std::vector<Aabb>& boxes)
{
    std::vector<int> items(boxes.size());
    for (size_t i = 0; i < items.size(); ++i)
        items[i] = static_cast<int>(i);
    nodes_.reserve(2 * boxes.size());
    root_ = items.empty() ? -1 : build(boxes, items, 0, items.size());
}

int ObjectTree::build(const std::vector<Aabb>& boxes, std::vector<int>& items, size_t begin, size_t end)
{
    const Aabb box = around(boxes, items, begin, end);
    const int index = static_cast<int>(nodes_.size());
    nodes_.push_back(Node{box, end - begin == 1 ? items[begin] : -1, -1, -1});
    if (end - begin == 1)
        return index;
    // Split where the two halves' boxes have the least surface for the
    // objects they hold, so that a large object (a table under everything)
    // ends up apart from the small ones it would otherwise hide.
    double bestCost = std::numeric_limits<double>::infinity();
    int bestAxis = 0;
    size_t middle = begin + 1;
    for (int axis = 0; axis < 3; ++axis) {
        std::sort(items.begin() + long(begin), items.begin() + long(end), [&](int a, int b) {
            return boxes[size_t(a)].lower[axis] + boxes[size_t(a)].upper[axis] <
                   boxes[size_t(b)].lower[axis] + boxes[size_t(b)].upper[axis];
        });
        for (size_t split = begin + 1; split < end; ++split) {
            const double cost = area(boxes, items, begin, split) * double(split - begin) +
                                area(boxes, items, split, end) * double(end - split);
            if (cost < bestCost) {
                bestCost = cost;
                bestAxis = axis;
                middle = split;
            }
        }
    }
    std::sort(items.begin() + long(begin), items.begin() + long(end), [&](int a, int b) {
        return boxes[size_t(a)].lower[bestAxis] + boxes[size_t(a)].upper[bestAxis] <
               boxes[size_t(b)].lower[bestAxis] + boxes[size_t(b)].upper[bestAxis];
    });
    const int left = build(boxes, items, begin, middle);
    const int right = build(boxes, items, middle, end);
    nodes_[size_t(index)].left = left;
    nodes_[size_t(index)].right = right;
    return index;
}

int ObjectTree::reachedBy(const Eigen::Vector3d& centre, double radius, int* out) const
{
    if (root_ < 0)
        return 0;
    int count = 0;
    // Deep enough for any tree a station could give: each level halves the objects.
    int stack[64];
    int depth = 0;
    stack[depth++] = root_;
    while (depth > 0) {
        const Node& node = nodes_[size_t(stack[--depth])];
        if (!node.box.reachedBy(centre, radius))
            continue;
        if (node.item >= 0) {
            out[count++] = node.item;
        } else {
            stack[depth++] = node.right;
            stack[depth++] = node.left;
        }
    }
    return count;
}
