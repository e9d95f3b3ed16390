// A real window under Xvfb: a scenario opens the form from the plug-in's
// menu, sets the number of samples, presses "Update Map"; the picture of the
// window shows the dock and the form record holds the counts.
#include "sim_process.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QSet>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

const QByteArray scenario = R"({"steps": [
    {"action": "Create collision-free map"},
    {"setValue": {"widget": "spnSamples", "value": 30}},
    {"click": "btnMakeMap"},
    {"form": true}
]})";

QJsonObject widgetOf(const QJsonObject& form, const QString& name)
{
    for (const QJsonValue& widget : form.value("widgets").toArray()) {
        if (widget.toObject().value("name").toString() == name)
            return widget.toObject();
    }
    return {};
}

// Distinct colours in a rectangle of the picture.
int coloursIn(const QImage& picture, const QRect& area)
{
    QSet<QRgb> colours;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    return colours.size();
}

TEST(WindowScreenshot, FormInItsDockAfterUpdateMap)
{
    ASSERT_FALSE(qEnvironmentVariableIsEmpty("DISPLAY")) << "run this test through xvfb-run";
    SimFolder folder(ZELVANE_PLUGIN_PATH);
    QFile workcell(WORKCELL_PATH);
    ASSERT_TRUE(workcell.open(QIODevice::ReadOnly));
    folder.write("station.json", workcell.readAll());
    folder.write("scenario.json", scenario);
    const QString picturePath = SCREENSHOT_PATH;
    QFile::remove(picturePath);
    const SimRun run = folder.run("station.json", "scenario.json", {"--screenshot", picturePath});
    ASSERT_EQ(run.exitCode, 0) << run.errorOutput.toStdString();
    std::printf("window picture: %s\n", qPrintable(picturePath));

    const QJsonObject form = run.single("form");
    ASSERT_TRUE(form.value("open").toBool());
    EXPECT_EQ(widgetOf(form, "spnSamples").value("value").toInt(), 30);
    const QString info = widgetOf(form, "lblInfo").value("text").toString();
    EXPECT_TRUE(info.startsWith("30 samples and ")) << info.toStdString();
    EXPECT_TRUE(info.endsWith(" edges")) << info.toStdString();
    EXPECT_EQ(run.ofType("sequence").size(), 1u);

    QImage picture(picturePath);
    ASSERT_FALSE(picture.isNull()) << "no picture at " << picturePath.toStdString();
    EXPECT_EQ(picture.size(), QSize(1100, 720));
    EXPECT_GT(coloursIn(picture, picture.rect()), 20);
    // The dock sits on the left, below the station tree: its lower left quarter holds the form.
    const QRect dockArea(0, picture.height() / 2, picture.width() / 4, picture.height() / 2 - 30);
    EXPECT_GT(coloursIn(picture, dockArea), 8);
}

}  // namespace
