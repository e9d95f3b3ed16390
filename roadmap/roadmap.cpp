// A robot's roadmap, and what keeps its samples and graph in agreement.
#include "roadmap.h"

#include <algorithm>
#include <utility>

Roadmap::Roadmap() : samples_(makeScopedMatrix()) {}

Roadmap::Roadmap(const Roadmap& other) : samples_(makeScopedMatrix()), graph_(other.graph_)
{
    copyMatrix(other.samples_.get(), samples_.get());
}

Roadmap& Roadmap::operator=(const Roadmap& other)
{
    if (this != &other) {
        graph_ = other.graph_;
        copyMatrix(other.samples_.get(), samples_.get());
    }
    return *this;
}

void Roadmap::clear()
{
    setSize(samples_.get(), 0, 0);
    graph_.clear();
}

void Roadmap::reset(int jointCount, int sampleCount)
{
    setSize(samples_.get(), jointCount, sampleCount);
    fillZero(samples_.get());
    graph_.clear();
    graph_.resize(sampleCount);
}

void Roadmap::setSample(int index, const double* configuration)
{
    std::copy(configuration, configuration + jointCount(), column(samples_.get(), index));
}

void Roadmap::truncate(int keep)
{
    graph_.resize(keep);
    setSize(samples_.get(), jointCount(), keep);
}

int Roadmap::addNode()
{
    return graph_.addNode();
}

void Roadmap::appendSample(const double* configuration)
{
    const int k = sampleCount();
    setSize(samples_.get(), jointCount(), k + 1);
    setSample(k, configuration);
}

bool Roadmap::assign(ScopedMatrix samples, RoadmapGraph graph)
{
    if (graph.nodeCount() > 0 && graph.nodeCount() < columns(samples.get())) {
        clear();
        return false;
    }
    samples_ = std::move(samples);
    graph_ = std::move(graph);
    return true;
}
