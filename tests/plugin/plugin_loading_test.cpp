// Loads the built plug-in the way a host does, knowing nothing of its code.
#include <QApplication>
#include <QJsonObject>
#include <QMetaMethod>
#include <QPluginLoader>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

QObject* pluginInstance()
{
    static QPluginLoader loader(QStringLiteral(ZELVANE_PLUGIN_PATH));
    QObject* instance = loader.instance();
    EXPECT_NE(instance, nullptr) << loader.errorString().toStdString();
    return instance;
}

TEST(PluginLoading, MetadataNamesInterfaceAndClass)
{
    QPluginLoader loader(QStringLiteral(ZELVANE_PLUGIN_PATH));
    const QJsonObject meta = loader.metaData();
    EXPECT_EQ(meta.value("IID").toString(), "Vorlik.IAppVorlik");
    EXPECT_EQ(meta.value("className").toString(), "PluginAutoPRM");
    // The plug-in's own metadata: an empty object, there for hosts that read it.
    const QJsonValue own = meta.value("MetaData");
    EXPECT_TRUE(own.isObject()) << "a \"MetaData\" object is there";
    EXPECT_TRUE(own.toObject().isEmpty());
}

TEST(PluginLoading, MetacastAnswersBothInterfaceNamesWithOnePointer)
{
    QObject* instance = pluginInstance();
    ASSERT_NE(instance, nullptr);
    void* byIid = instance->qt_metacast("Vorlik.IAppVorlik");
    void* byName = instance->qt_metacast("IAppVorlik");
    EXPECT_NE(byIid, nullptr);
    EXPECT_EQ(byIid, byName);
    EXPECT_EQ(instance->qt_metacast("PluginAutoPRM"), static_cast<void*>(instance));
    EXPECT_EQ(instance->qt_metacast("SomethingElse"), nullptr);
    // Nothing but its class and its interface: no helper it is built from.
    for (const char* name : {"PlannerSession", "PlannerSessionHost", "SessionCallbacks", "QMainWindow"})
        EXPECT_EQ(instance->qt_metacast(name), nullptr) << name;
    EXPECT_STREQ(instance->metaObject()->className(), "PluginAutoPRM");
}

TEST(PluginLoading, InstanceIsOneObject)
{
    QPluginLoader second(QStringLiteral(ZELVANE_PLUGIN_PATH));
    EXPECT_EQ(second.instance(), pluginInstance());
}

TEST(PluginLoading, MethodsAfterQObjectsHaveTheirSignaturesInOrder)
{
    QObject* instance = pluginInstance();
    ASSERT_NE(instance, nullptr);
    const QMetaObject* meta = instance->metaObject();
    const std::vector<std::pair<const char*, QMetaMethod::MethodType>> expected = {
        {"UpdateForm()", QMetaMethod::Signal},
        {"callback_robotpilot()", QMetaMethod::Slot},
        {"callback_join_seltargets()", QMetaMethod::Slot},
        {"callback_join_selprogs()", QMetaMethod::Slot},
        {"callback_robotpilot_closed()", QMetaMethod::Slot},
        {"Join_Selection_Smart(bool)", QMetaMethod::Slot},
        {"Join_Selected_Targets(bool,Item,Item)", QMetaMethod::Slot},
        {"Join_Selected_Targets(bool,Item)", QMetaMethod::Slot},
        {"Join_Selected_Targets(bool)", QMetaMethod::Slot},
        {"Join_Selected_Targets()", QMetaMethod::Slot},
        {"Join_Programs(bool,QList<Item>,QString)", QMetaMethod::Slot},
        {"Join_Programs(bool,QList<Item>)", QMetaMethod::Slot},
        {"Join_Joints(bool,const double*,const double*,QString)", QMetaMethod::Slot},
        {"ShowSamples()", QMetaMethod::Slot},
        {"RenderMap()", QMetaMethod::Slot},
    };
    const int offset = QObject::staticMetaObject.methodCount();
    ASSERT_EQ(meta->methodCount() - offset, int(expected.size()));
    for (size_t i = 0; i < expected.size(); ++i) {
        const QMetaMethod method = meta->method(offset + int(i));
        EXPECT_EQ(method.methodSignature().toStdString(), expected[i].first) << "index " << i;
        EXPECT_EQ(method.methodType(), expected[i].second) << "index " << i;
        EXPECT_EQ(method.access(), QMetaMethod::Public) << "index " << i;
    }
    EXPECT_EQ(QByteArray(meta->method(offset + 6).typeName()), "Item");
    EXPECT_EQ(QByteArray(meta->method(offset + 10).typeName()), "bool");
    EXPECT_EQ(QByteArray(meta->method(offset + 12).typeName()), "Item");
}

TEST(PluginLoading, ExportsOnlyTheTwoEntryPoints)
{
    QProcess nm;
    nm.start("nm", {"-D", "--defined-only", QStringLiteral(ZELVANE_PLUGIN_PATH)});
    ASSERT_TRUE(nm.waitForFinished(30000));
    ASSERT_EQ(nm.exitCode(), 0);
    QStringList exported;
    for (const QByteArray& line : nm.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        // Function and data symbols; the linker's own markers are absolute (A).
        if (fields.size() == 3 && fields[1] != "A")
            exported << QString::fromLatin1(fields[2]);
    }
    exported.sort();
    EXPECT_EQ(exported, QStringList({"qt_plugin_instance", "qt_plugin_query_metadata"}));
}

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
