// The configurations a robot passes through when a program is played.
#pragma once

#include <cstddef>
#include <vector>

class SimItem;
class Station;

// A program as the host plays it: its robot and every configuration shown,
// in order: the first is the program's first target, the last its last. Each
// joint move goes by frames of at most DegreesPerFrame on any joint (between
// 1 and MostFramesPerMove frames). Calls are followed into the programs they
// name, a program the call chain is already in excepted. A playback shows at
// most MostConfigurations: programs that call each other many times over, or
// hold very many moves, are played up to there.
struct ProgramPlayback {
    static constexpr double DegreesPerFrame = 2.0;
    static constexpr int MostFramesPerMove = 100;
    static constexpr int DeepestCall = 16;
    static constexpr std::size_t MostConfigurations = 100000;

    const SimItem* robot = nullptr;
    std::vector<std::vector<double>> configurations;

    // Nothing to play: no robot, or no target its robot can take.
    bool empty() const { return configurations.empty(); }
};

ProgramPlayback playbackOf(const Station& station, const SimItem* program);
