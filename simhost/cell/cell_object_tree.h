// The broad phase: a tree of the objects' bounding boxes.
#pragma once

#include "cell_placed_solid.h"

#include <vector>

// An axis-aligned box in the world.
struct Aabb {
    Eigen::Vector3d lower = Eigen::Vector3d::Zero();
    Eigen::Vector3d upper = Eigen::Vector3d::Zero();

    // The smallest box that holds the placed solid.
    static Aabb around(const PlacedSolid& solid);
    Aabb merged(const Aabb& other) const;
    // True when the ball of that centre and radius reaches the box.
    bool reachedBy(const Eigen::Vector3d& centre, double radius) const
    {
        double sum = 0.0;
        for (int i = 0; i < 3; ++i) {
            const double outside = centre[i] < lower[i] ? lower[i] - centre[i]
                                   : centre[i] > upper[i] ? centre[i] - upper[i] : 0.0;
            sum += outside * outside;
        }
        return sum <= radius * radius;
    }
};

// The broad phase over the cell's objects, which stand still: a tree of
// bounding boxes, built once per view, that answers which objects a link's
// bounding sphere may reach without looking at the others one by one.
class ObjectTree {
public:
    explicit ObjectTree(const std::vector<Aabb>& boxes);

    // Writes the indices of the boxes the ball reaches into out, which has
    // room for every box; answers how many.
    int reachedBy(const Eigen::Vector3d& centre, double radius, int* out) const;

private:
    struct Node {
        Aabb box;
        int item = -1;  // a leaf's box index; -1 for an inner node
        int left = -1;
        int right = -1;
    };

    int build(const std::vector<Aabb>& boxes, std::vector<int>& items, size_t begin, size_t end);

    std::vector<Node> nodes_;
    int root_ = -1;
};
