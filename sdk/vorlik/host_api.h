// The host's programming interface, as the plug-in calls it.
#pragma once

#include "vorlik/host_item.h"

#include <QByteArray>
#include <QList>
#include <QString>

// The host's programming interface, handed to a plug-in at load time and valid
// until it is unloaded. Operations are listed in the order of their virtual
// slots. Output arguments come first and are also returned.
class HostApi {
public:
    virtual HostItem* getItem(const QString& name, int itemType) = 0;
    virtual QList<Item>& getItemList(QList<Item>& out, int itemType) = 0;
    virtual bool isValidItem(HostItem* item) = 0;
    virtual HostItem* pickItem(const QString& message, int itemType) = 0;
    virtual void showMessage(const QString& text, bool popup) = 0;
    virtual HostItem* addTarget(const QString& name, HostItem* parent, HostItem* robot) = 0;
    virtual HostItem* addProgram(const QString& name, HostItem* robot) = 0;
    virtual void update(int flags) = 0;
    virtual void setRenderMode(int mode) = 0;
    virtual int collisions() = 0;
    virtual QString& command(QString& out, const QString& name, const QString& value) = 0;
    virtual QList<Item>& getSelectedItems(QList<Item>& out) = 0;
    virtual QByteArray getDataParam(const QString& key) = 0;
    virtual void setDataParam(const QString& key, const QByteArray& bytes) = 0;
    virtual int renderMode() = 0;
    // Points are x, y, z triples; color is red, green, blue, alpha in 0..1.
    // The host copies the points before it returns.
    virtual void drawGeometry(int primitive, const double* points, int pointCount, const float color[4],
                              float lineWidth, int flag) = 0;

protected:
    ~HostApi() = default;
};

// Registers Item and QList<Item> with the meta-type system under those names,
// so that slots taking them can be invoked by name. Safe to call repeatedly.
inline void registerHostMetaTypes()
{
    qRegisterMetaType<Item>("Item");
    qRegisterMetaType<QList<Item>>("QList<Item>");
}
