// The plug-in library's two entry points, as Qt's plug-in loader looks for
// them: the metadata block and the one PluginAutoPRM object.
#include "plugin_autoprm.h"

#include <QPointer>
#include <QtPlugin>

static_assert(QT_VERSION >= QT_VERSION_CHECK(5, 13, 0) && QT_VERSION < QT_VERSION_CHECK(6, 0, 0),
              "the metadata below is in the form Qt 5.13 to 5.15 read");

namespace {
// Qt's plug-in metadata in its binary (CBOR) form: the interface, the class
// and the plug-in's own metadata, an empty object. moc writes the same block
// from Q_PLUGIN_METADATA but leaves an empty "MetaData" object out, and
// hosts look for it; so the block is written here.
QT_PLUGIN_METADATA_SECTION
constexpr unsigned char metadata[] = {
    'Q', 'T', 'M', 'E', 'T', 'A', 'D', 'A', 'T', 'A', ' ', '!',
    // metadata version, Qt version, architectural requirements
    0, QT_VERSION_MAJOR, QT_VERSION_MINOR, qPluginArchRequirements(),
    0xbf,  // a map of unknown length
    // "IID": a text of 17 bytes
    0x02, 0x71, 'V', 'o', 'r', 'l', 'i', 'k', '.', 'I', 'A', 'p', 'p', 'V', 'o', 'r', 'l', 'i', 'k',
    // "className": a text of 13 bytes
    0x03, 0x6d, 'P', 'l', 'u', 'g', 'i', 'n', 'A', 'u', 't', 'o', 'P', 'R', 'M',
    // "MetaData": an empty map
    0x04, 0xa0,
    0xff,  // end of the map
};
}  // namespace

extern "C" Q_DECL_EXPORT const char* qt_plugin_query_metadata()
{
    return reinterpret_cast<const char*>(metadata);
}

// One object for the library's lifetime; a new one only after it was destroyed.
extern "C" Q_DECL_EXPORT QObject* qt_plugin_instance()
{
    static QPointer<QObject> instance;
    if (!instance)
        instance = new PluginAutoPRM;
    return instance;
}
