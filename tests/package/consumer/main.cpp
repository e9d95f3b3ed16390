// The smallest host: it knows the plug-in only through the SDK headers,
// loads it from its file and asks its name.
#include <vorlik/iappvorlik.h>
#include <vorlik/item_types.h>

#include <QApplication>
#include <QPluginLoader>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    registerHostMetaTypes();
    if (argc < 2)
        return 2;
    QPluginLoader loader(QString::fromLocal8Bit(argv[1]));
    IAppVorlik* plugin = qobject_cast<IAppVorlik*>(loader.instance());
    if (!plugin) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(loader.errorString()));
        return 1;
    }
    std::printf("%s\n", qUtf8Printable(plugin->pluginName()));
    return plugin->pluginName() == QLatin1String("Zelvane") ? 0 : 1;
}
