// Fuzzes the scenario file reader with any bytes. A refusal must say why; an
// accepted scenario names each of its steps, nested ones included.
#include "scenario.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <cstdlib>

namespace {

void checkSteps(const std::vector<Step>& steps, int depth)
{
    for (const Step& step : steps) {
        if (step.kind.isEmpty() || step.nested.size() != depth || !step.label().startsWith(QStringLiteral("step ")))
            std::abort();
        checkSteps(step.steps, depth + 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Scenario scenario;
    QString problem;
    if (!scenario_file::parse(QByteArray(reinterpret_cast<const char*>(data), int(size)), &scenario, &problem)) {
        if (problem.isEmpty())
            std::abort();
        return 0;
    }
    checkSteps(scenario.steps, 0);
    return 0;
}
