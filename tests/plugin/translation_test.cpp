// Every text the planner shows goes through Qt's translation in the
// "PluginAutoPRM" context, and the catalogue shipped for translators
// (resources/translations/zelvane.ts, as lupdate writes it) holds each one.
#include "plugin_fixture.h"

#include "form_prm.h"
#include "planner_session.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QSet>
#include <QTranslator>
#include <QXmlStreamReader>

#include <utility>

namespace {

// Notes every text asked for, and translates none.
class RecordingTranslator : public QTranslator {
public:
    QString translate(const char* context, const char* sourceText, const char* disambiguation = nullptr,
                      int n = -1) const override
    {
        (void)disambiguation;
        (void)n;
        asked.insert({QString::fromUtf8(context), QString::fromUtf8(sourceText)});
        return QString();
    }
    bool isEmpty() const override { return false; }

    mutable QSet<std::pair<QString, QString>> asked;
};

// The source texts of the catalogue, by context.
QSet<std::pair<QString, QString>> catalogue()
{
    QSet<std::pair<QString, QString>> texts;
    QFile file(QStringLiteral(ZELVANE_TS_PATH));
    if (!file.open(QIODevice::ReadOnly))
        return texts;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("source"))
            texts.insert({context, xml.readElementText()});
    }
    return texts;
}

bool isQtsOwn(const QString& context)
{
    return context.size() > 1 && context[0] == 'Q' && context[1].isUpper();
}

class Translation : public LoadedPlugin {
protected:
    void SetUp() override { QCoreApplication::installTranslator(&translator); }
    void TearDown() override
    {
        QCoreApplication::removeTranslator(&translator);
        LoadedPlugin::TearDown();
    }

    RecordingTranslator translator;
};

}  // namespace

TEST_F(Translation, TheCatalogueHoldsEveryTextThePlannerAsksFor)
{
    load();
    FakeRobot* robot = addRobot("Arm1");
    robot->boxes.push_back({{-20, -20, -181}, {20, 20, 181}});
    FakeItem* a = host.addItem(ItemType::Target, "A", robot);
    a->setJoints(JointVector(std::vector<double>{-100, 0, 0}.data(), 3));
    FakeItem* b = host.addItem(ItemType::Target, "B", robot);
    b->setJoints(JointVector(std::vector<double>{100, 0, 0}.data(), 3));

    // The paths that show texts: settings, a map, links, additions, refusals.
    plugin->pluginCommand("Samples", "30");
    plugin->pluginCommand("Samples", "abc");
    plugin->pluginCommand("Calc", "");
    plugin->pluginCommand("Join", "A|B");
    plugin->pluginCommand("Join", "A");
    plugin->pluginCommand("Add", "");
    plugin->pluginCommand("Save", "/nonexistent-folder/x.txt");
    host.selection = {a, b};
    plugin->AddTargetsToMap(true, false);
    plugin->callback_robotpilot();
    plugin->pluginCommand("Samples", "99999");
    plugin->pluginCommand("Calc", "");
    plugin->pluginCommand("Samples", "0");
    plugin->pluginCommand("Calc", "");
    host.onCollisionTest = [this](int) {
        host.onCollisionTest = nullptr;
        plugin->pluginCommand("Samples", "5");
    };
    plugin->pluginCommand("Samples", "10");
    plugin->pluginCommand("Calc", "");
    host.dataParams["Zelvane-Rob Arm1"] = QByteArray::fromHex("00000001");
    plugin->loadRobotMap();
    QByteArray settings;
    {
        QDataStream stream(&settings, QIODevice::WriteOnly);
        stream << qint32(0) << qint32(-1) << 4.0 << qint32(5) << false << QString("Arm1");
    }
    host.dataParams["Zelvane"] = settings;
    plugin->loadSettings();

    const QSet<std::pair<QString, QString>> shipped = catalogue();
    ASSERT_FALSE(shipped.isEmpty()) << "the catalogue " << ZELVANE_TS_PATH << " could not be read";
    int ours = 0;
    for (const auto& [context, text] : translator.asked) {
        if (isQtsOwn(context))
            continue;
        ++ours;
        EXPECT_EQ(context, "PluginAutoPRM") << text.toStdString();
        EXPECT_TRUE(shipped.contains({context, text})) << "not in the catalogue: " << text.toStdString();
    }
    EXPECT_GT(ours, 35) << "the paths above ask for most of the planner's texts";
}
