// Settings and maps stored in the station's data parameters, byte by byte.
#include "plugin_fixture.h"

#include "log_capture.h"
#include "matrix_text.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include <QDataStream>
#include <QTextStream>
#include <QtEndian>

#include <cstring>

namespace {

qint32 int32At(const QByteArray& bytes, int offset)
{
    return qFromBigEndian<qint32>(reinterpret_cast<const uchar*>(bytes.constData() + offset));
}

double float64At(const QByteArray& bytes, int offset)
{
    const quint64 bits = qFromBigEndian<quint64>(reinterpret_cast<const uchar*>(bytes.constData() + offset));
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

QString utf16At(const QByteArray& bytes, int offset, int byteLength)
{
    QString text;
    for (int i = 0; i < byteLength; i += 2)
        text += QChar(ushort((uchar(bytes[offset + i]) << 8) | uchar(bytes[offset + i + 1])));
    return text;
}

void fill(RoadmapMatrix* matrix, int rowCount, int columnCount, double seed)
{
    setSize(matrix, rowCount, columnCount);
    for (int i = 0; i < rowCount * columnCount; ++i)
        matrix->values[i] = seed + i * 0.25 - (i % 7) * 3.5;
}

// A symmetric graph with an edge between every `stride`-th pair, lengths from `seed`.
void fillGraph(RoadmapGraph* graph, int nodeCount, int stride, double seed)
{
    graph->clear();
    graph->resize(nodeCount);
    for (int a = 0; a < nodeCount; ++a)
        for (int b = a + 1; b < nodeCount; ++b)
            if ((a + b) % stride == 0)
                graph->setLength(a, b, seed + a * 0.5 + b * 0.125);
}

// One matrix in the binary format, written by QDataStream as a station stores it.
QByteArray matrixBytes(const RoadmapMatrix* matrix)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << qint32(matrix->dimensionCount);
    for (int i = 0; i < matrix->dimensionCount; ++i)
        stream << qint32(matrix->extents[i]);
    for (int i = 0; i < elementCount(matrix); ++i)
        stream << matrix->values[i];
    return bytes;
}

class Persistence : public LoadedPlugin {
protected:
    void SetUp() override { load(); }
};

TEST_F(Persistence, WithoutStoredSettingsLoadingFailsAndDefaultsStay)
{
    EXPECT_FALSE(plugin->loadSettings());
    EXPECT_EQ(settings().samples, 100);
    EXPECT_EQ(settings().edgesPerSample, 25);
    EXPECT_EQ(settings().robotStepDeg, 4.0);
    EXPECT_EQ(settings().newNodeEdges, 5);
    EXPECT_FALSE(settings().displaySamples);
}

TEST_F(Persistence, RecordOfAFutureVersionIsIgnoredButForTheSampleCount)
{
    FakeRobot* robot = addRobot("Arm1");
    setRobot(robot);
    setSettings([](PlannerSettings& s) { s.edgesPerSample = 12; });
    setSettings([](PlannerSettings& s) { s.samples = 40; });
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(-1) << qint32(3) << 2.0 << qint32(1) << true << QString("Other");
    }
    host.dataParams["Zelvane"] = bytes;
    LogCapture log;
    EXPECT_FALSE(plugin->loadSettings());
    EXPECT_TRUE(log.messages().contains("Warning: Settings not loaded. Future version?"));
    EXPECT_EQ(settings().samples, 100);
    EXPECT_EQ(settings().edgesPerSample, 12);
    EXPECT_EQ(session().robot(), robot);
}

TEST_F(Persistence, SettingsRecordDecodesFieldByField)
{
    FakeRobot* robot = addRobot("Arm1");
    setRobot(robot);
    setSettings([](PlannerSettings& s) { s.samples = 250; });
    setSettings([](PlannerSettings& s) { s.edgesPerSample = 17; });
    setSettings([](PlannerSettings& s) { s.robotStepDeg = 2.5; });
    setSettings([](PlannerSettings& s) { s.newNodeEdges = 6; });
    setSettings([](PlannerSettings& s) { s.displaySamples = true; });
    session().markChanged();
    plugin->saveSettings();

    const QByteArray bytes = host.dataParams.value("Zelvane");
    ASSERT_EQ(bytes.size(), 4 + 4 + 8 + 4 + 1 + 4 + 8);
    EXPECT_EQ(int32At(bytes, 0), 250);
    EXPECT_EQ(int32At(bytes, 4), 17);
    EXPECT_EQ(float64At(bytes, 8), 2.5);
    EXPECT_EQ(int32At(bytes, 16), 6);
    EXPECT_EQ(bytes[20], char(1));
    EXPECT_EQ(int32At(bytes, 21), 8);
    EXPECT_EQ(utf16At(bytes, 25, 8), "Arm1");
    EXPECT_FALSE(session().settingsChanged());
}

TEST_F(Persistence, MapRecordDecodesMatrixByMatrix)
{
    FakeRobot* robot = addRobot("Arm1");
    setRobot(robot);
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        fill(samples, 2, 3, 1.0);
        graph->resize(3);
        graph->setLength(0, 1, 2.5);
        graph->setLength(2, 1, 0.75);
        setSize(route, 0, 0);
    });
    session().markChanged();
    plugin->saveSettings();

    const QByteArray bytes = host.dataParams.value("Zelvane-Rob Arm1");
    ASSERT_EQ(bytes.size(), (12 + 6 * 8) + (12 + 9 * 8) + 12);
    ScopedMatrix dense = makeScopedMatrix();
    denseFromGraph(map().graph(), dense.get());
    EXPECT_EQ(dense->values[1], 2.5) << "(1, 0)";
    EXPECT_EQ(dense->values[5], 0.75) << "(2, 1)";
    int offset = 0;
    for (const RoadmapMatrix* matrix : {static_cast<const RoadmapMatrix*>(map().samples()), static_cast<const RoadmapMatrix*>(dense.get())}) {
        EXPECT_EQ(int32At(bytes, offset), 2);
        EXPECT_EQ(int32At(bytes, offset + 4), rows(matrix));
        EXPECT_EQ(int32At(bytes, offset + 8), columns(matrix));
        offset += 12;
        for (int i = 0; i < elementCount(matrix); ++i, offset += 8)
            EXPECT_EQ(float64At(bytes, offset), matrix->values[i]) << "element " << i;
    }
    EXPECT_EQ(bytes.mid(offset), QByteArray::fromHex("000000020000000000000000"));
}

TEST_F(Persistence, EmptyMatrixIsTwelveBytes)
{
    ScopedMatrix empty = makeScopedMatrix();
    EXPECT_EQ(matrixBytes(empty.get()), QByteArray::fromHex("000000020000000000000000"));
}

TEST_F(Persistence, SavingWithoutRobotWritesEmptyNameAndNoMap)
{
    session().markChanged();
    plugin->saveSettings();
    const QByteArray bytes = host.dataParams.value("Zelvane");
    ASSERT_EQ(bytes.size(), 25);
    EXPECT_EQ(int32At(bytes, 21), 0);
    EXPECT_EQ(host.dataParams.size(), 1);
    EXPECT_TRUE(hasMessage("Invalid robot: add a robot or load a project", false));
}

TEST_F(Persistence, SavingTwiceWritesOnce)
{
    setRobot(addRobot("Arm1"));
    session().markChanged();
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.size(), 2);
    host.dataParams.clear();
    plugin->saveSettings();
    EXPECT_TRUE(host.dataParams.isEmpty());
}

TEST_F(Persistence, EmptyRobotRecordLeavesMapEmptyAndLogsNothing)
{
    setRobot(addRobot("Arm1"));
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        fill(samples, 3, 4, 2.0);
    });
    host.dataParams["Zelvane-Rob Arm1"] = QByteArray();
    LogCapture log;
    plugin->loadRobotMap();
    EXPECT_EQ(columns(map().samples()), 0);
    EXPECT_EQ(columns(map().graph()), 0);
    EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join("|").toStdString();
}

TEST_F(Persistence, RecordWithSamplesOnlyLeavesGraphAndRouteEmpty)
{
    setRobot(addRobot("Arm1"));
    ScopedMatrix stored = makeScopedMatrix();
    fill(stored.get(), 3, 5, 1.0);
    host.dataParams["Zelvane-Rob Arm1"] = matrixBytes(stored.get());
    LogCapture log;
    plugin->loadRobotMap();
    EXPECT_EQ(rows(map().samples()), 3);
    EXPECT_EQ(columns(map().samples()), 5);
    EXPECT_EQ(rows(map().graph()), 0);
    EXPECT_EQ(columns(map().graph()), 0);
    EXPECT_EQ(rows(map().route()), 0);
    EXPECT_EQ(columns(map().route()), 0);
    EXPECT_EQ(log.messages().count("No data to read"), 2);
}

TEST_F(Persistence, LargeMapRoundTripsElementByElement)
{
    FakeRobot* robot = addRobot("Arm1", 6);
    setRobot(robot);
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        fill(samples, 6, 250, 3.0);
        fillGraph(graph, 250, 7, 0.5);
        setSize(route, 1, 12);
        for (int i = 0; i < 12; ++i)
            route->values[i] = 7 + 19 * i;
    });
    ScopedMatrix samples = makeScopedMatrix();
    ScopedMatrix graph = makeScopedMatrix();
    ScopedMatrix route = makeScopedMatrix();
    copyMatrix(map().samples(), samples.get());
    denseFromGraph(map().graph(), graph.get());
    copyMatrix(map().route(), route.get());

    session().markChanged();
    plugin->saveSettings();
    editLayout([&](RoadmapMatrix* heldSamples, RoadmapGraph*, RoadmapMatrix*) { setSize(heldSamples, 0, 0); });
    setRobot(nullptr);
    ASSERT_TRUE(plugin->loadSettings());
    EXPECT_EQ(session().robot(), robot);
    ScopedMatrix loadedGraph = makeScopedMatrix();
    denseFromGraph(map().graph(), loadedGraph.get());
    const RoadmapMatrix* loadedGraphMatrix = loadedGraph.get();
    for (const auto& [loaded, saved] : {std::pair{map().samples(), samples.get()}, std::pair{loadedGraphMatrix, graph.get()},
                                        std::pair{map().route(), route.get()}}) {
        ASSERT_EQ(rows(loaded), rows(saved));
        ASSERT_EQ(columns(loaded), columns(saved));
        for (int i = 0; i < elementCount(saved); ++i)
            ASSERT_EQ(loaded->values[i], saved->values[i]) << "element " << i;
    }
}

TEST_F(Persistence, StoredRobotThatIsGoneFallsBackToTheFirstWithItsOwnMap)
{
    FakeRobot* first = addRobot("Arm1");
    ScopedMatrix stored = makeScopedMatrix();
    fill(stored.get(), 3, 5, 1.0);
    host.dataParams["Zelvane-Rob Arm1"] = matrixBytes(stored.get());
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(60) << qint32(8) << 3.0 << qint32(4) << false << QString("Gone");
    }
    host.dataParams["Zelvane"] = bytes;
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) { fill(samples, 3, 2, 1.0); });
    EXPECT_TRUE(plugin->loadSettings());
    EXPECT_EQ(session().robot(), first);
    EXPECT_EQ(settings().samples, 60);
    EXPECT_EQ(settings().edgesPerSample, 8);
    EXPECT_EQ(settings().robotStepDeg, 3.0);
    EXPECT_EQ(settings().newNodeEdges, 4);
    EXPECT_EQ(columns(map().samples()), 5) << "the first robot's own map, not the one held before";
    EXPECT_EQ(map().robot(), first);
}

TEST_F(Persistence, SwitchingRobotsKeepsOneMapPerRobot)
{
    addRobot("Arm1");
    addRobot("Arm2");
    ASSERT_TRUE(plugin->selectRobot(true, "Arm1"));
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        fill(samples, 3, 4, 1.0);
    });
    session().markChanged();
    ASSERT_TRUE(plugin->selectRobot(true, "Arm2"));
    EXPECT_EQ(columns(map().samples()), 0);
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        fill(samples, 3, 7, 2.0);
    });
    session().markChanged();
    ASSERT_TRUE(plugin->selectRobot(true, "Arm1"));
    EXPECT_EQ(columns(map().samples()), 4);
    EXPECT_EQ(map().samples()->values[0], 1.0);
    ASSERT_TRUE(plugin->selectRobot(true, "Arm2"));
    EXPECT_EQ(columns(map().samples()), 7);
    EXPECT_EQ(map().samples()->values[0], 2.0);
}

TEST(MatrixText, CommaAndBracketForms)
{
    ScopedMatrix matrix = makeScopedMatrix();
    setSize(matrix.get(), 2, 2);
    matrix->values[0] = 1.0;
    matrix->values[1] = -2.5;
    matrix->values[2] = 0.0;
    matrix->values[3] = 1.0 / 3.0;
    QString comma;
    QTextStream commaStream(&comma);
    writeMatrixText(commaStream, matrix.get(), true);
    commaStream.flush();
    EXPECT_EQ(comma, "1.00000000, -2.50000000, \n0.00000000, 0.33333333, \n");
    QString bracket;
    QTextStream bracketStream(&bracket);
    writeMatrixText(bracketStream, matrix.get(), false);
    bracketStream.flush();
    EXPECT_EQ(bracket, "[1.00000000 -2.50000000 ];\n[0.00000000 0.33333333 ];\n");

    setSize(matrix.get(), 3, 0);
    QString empty;
    QTextStream emptyStream(&empty);
    writeMatrixText(emptyStream, matrix.get(), true);
    emptyStream.flush();
    EXPECT_TRUE(empty.isEmpty());
}

}  // namespace
