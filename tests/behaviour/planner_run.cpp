#include "planner_run.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>

const char* const wallStation = R"({
  "params":   { "PathStepCollisionDeg": "4.0" },
  "frames":   [ { "name": "Cell", "parent": null } ],
  "robots":   [ { "name": "Arm1", "parent": "Cell", "lower": [-90, -60, -90], "upper": [90, 90, 90],
                  "joints": [0, 70, 0],
                  "jointBoxes": [ { "lower": [-20, -61, -91], "upper": [20, 40, 91] } ],
                  "carries": null } ],
  "targets":  [ { "name": "Home", "robot": "Arm1", "parent": "Cell", "joints": [0, 70, 0] },
                { "name": "Left", "robot": "Arm1", "parent": "Cell", "joints": [-60, 0, 10] },
                { "name": "Right", "robot": "Arm1", "parent": "Cell", "joints": [60, 0, -10] } ],
  "programs": []
})";

SimRun PlannerRun::runRaw(const QByteArray& steps, const QByteArray& station, const QByteArray& host)
{
    folder.write(QStringLiteral("station.json"), station);
    folder.write(QStringLiteral("scenario.json"), "{\"host\": " + host + ", \"steps\": " + steps + "}");
    return folder.run(QStringLiteral("station.json"), QStringLiteral("scenario.json"),
                      {QStringLiteral("--save"), folder.path(QStringLiteral("after.json"))});
}

SimRun PlannerRun::run(const QByteArray& steps, const QByteArray& station, const QByteArray& host)
{
    SimRun done = runRaw(steps, station, host);
    EXPECT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    return done;
}

QStringList PlannerRun::replies(const SimRun& done)
{
    QStringList texts;
    for (const QJsonObject& record : done.ofType(QStringLiteral("reply")))
        texts << record.value(QStringLiteral("reply")).toString();
    return texts;
}

QStringList PlannerRun::logLines(const SimRun& done)
{
    QStringList lines;
    for (const QJsonObject& record : done.ofType(QStringLiteral("log")))
        lines << record.value(QStringLiteral("text")).toString();
    return lines;
}

QStringList PlannerRun::messages(const SimRun& done)
{
    QStringList texts;
    for (const QJsonObject& record : done.ofType(QStringLiteral("message"))) {
        texts << record.value(QStringLiteral("text")).toString() +
                     (record.value(QStringLiteral("popup")).toBool() ? QStringLiteral(" (popup)") : QString());
    }
    return texts;
}

std::vector<QJsonObject> PlannerRun::programs(const SimRun& done)
{
    return done.ofType(QStringLiteral("program"));
}

QJsonObject PlannerRun::readJson(const QByteArray& bytes)
{
    return QJsonDocument::fromJson(bytes).object();
}

std::vector<double> jointsOf(const QJsonValue& array)
{
    std::vector<double> values;
    for (const QJsonValue& value : array.toArray())
        values.push_back(value.toDouble());
    return values;
}

JointBoxes JointBoxes::ofRobot(const QJsonObject& robot)
{
    JointBoxes boxes;
    for (const QJsonValue& box : robot.value(QStringLiteral("jointBoxes")).toArray()) {
        boxes.lower.push_back(jointsOf(box.toObject().value(QStringLiteral("lower"))));
        boxes.upper.push_back(jointsOf(box.toObject().value(QStringLiteral("upper"))));
    }
    return boxes;
}

bool JointBoxes::collides(const std::vector<double>& q) const
{
    for (size_t b = 0; b < lower.size(); ++b) {
        bool inside = true;
        for (size_t i = 0; i < q.size(); ++i)
            inside = inside && lower[b][i] < q[i] && q[i] < upper[b][i];
        if (inside)
            return true;
    }
    return false;
}

bool JointBoxes::moveCollides(const std::vector<double>& a, const std::vector<double>& b, double step) const
{
    double longest = 0.0;
    for (size_t i = 0; i < a.size(); ++i)
        longest = std::max(longest, std::fabs(b[i] - a[i]));
    const int n = std::max(1, int(std::ceil(longest / step)));
    std::vector<double> point(a.size());
    for (int k = 0; k <= n; ++k) {
        for (size_t i = 0; i < a.size(); ++i)
            point[i] = a[i] + (b[i] - a[i]) * k / n;
        if (collides(point))
            return true;
    }
    return false;
}
