// The configurations a robot passes through when a program is played.
#include "program_playback.h"

#include "station.h"

#include "vorlik/item_types.h"

#include <algorithm>
#include <cmath>

namespace {

// The targets a program moves to, in order, calls followed.
void collectStops(const Station& station, const SimItem* program, std::vector<const SimItem*>& callers,
                  std::vector<const SimItem*>* stops)
{
    if (std::find(callers.begin(), callers.end(), program) != callers.end()
        || int(callers.size()) >= ProgramPlayback::DeepestCall)
        return;
    callers.push_back(program);
    for (const Instruction& instruction : program->instructions) {
        // Every stop shows at least once: no more stops than configurations are wanted.
        if (stops->size() >= ProgramPlayback::MostConfigurations)
            break;
        if (instruction.target) {
            if (station.holds(instruction.target))
                stops->push_back(instruction.target);
        } else if (const SimItem* called = station.find(instruction.call, ItemType::Program)) {
            collectStops(station, called, callers, stops);
        }
    }
    callers.pop_back();
}

int framesOfMove(const std::vector<double>& from, const std::vector<double>& to)
{
    double largest = 0.0;
    for (size_t i = 0; i < from.size(); ++i)
        largest = std::max(largest, std::fabs(to[i] - from[i]));
    if (!std::isfinite(largest))
        return 1;
    const double frames = std::ceil(largest / ProgramPlayback::DegreesPerFrame);
    return int(std::clamp(frames, 1.0, double(ProgramPlayback::MostFramesPerMove)));
}

}  // namespace

ProgramPlayback playbackOf(const Station& station, const SimItem* program)
{
    ProgramPlayback playback;
    if (!station.holds(program) || program->itemType() != ItemType::Program || !station.holds(program->robot))
        return playback;
    const SimItem* robot = program->robot;
    std::vector<const SimItem*> callers;
    std::vector<const SimItem*> stops;
    collectStops(station, program, callers, &stops);
    const size_t jointCount = size_t(robot->jointCount());
    for (const SimItem* stop : stops) {
        if (playback.configurations.size() >= ProgramPlayback::MostConfigurations)
            break;
        const std::vector<double>& to = stop->jointValues;
        if (to.size() != jointCount)
            continue;
        if (playback.configurations.empty()) {
            playback.configurations.push_back(to);
            continue;
        }
        const std::vector<double> from = playback.configurations.back();
        const int frames = int(std::min<size_t>(size_t(framesOfMove(from, to)),
                                                ProgramPlayback::MostConfigurations - playback.configurations.size()));
        for (int k = 1; k < frames; ++k) {
            std::vector<double> q(jointCount);
            for (size_t i = 0; i < jointCount; ++i)
                q[i] = from[i] + (to[i] - from[i]) * k / frames;
            playback.configurations.push_back(std::move(q));
        }
        playback.configurations.push_back(to);
    }
    if (!playback.configurations.empty())
        playback.robot = robot;
    return playback;
}
