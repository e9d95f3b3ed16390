// The host API the plug-in calls, answered from the in-memory station.
#pragma once

#include "scene_drawings.h"
#include "station.h"

#include "vorlik/host_api.h"

#include <deque>
#include <memory>
#include <vector>

class HostMonitor;
class IAppVorlik;
class QStatusBar;
class QWidget;

// The host's programming interface over the in-memory station. A station that
// is replaced stays alive, retired, so that handles the plug-in still holds
// remain safe to pass back (they are simply no longer valid).
class SimHostApi final : public HostApi {
public:
    SimHostApi(std::unique_ptr<Station> station, HostMonitor* monitor);
    virtual ~SimHostApi() = default;

    Station& station() { return *station_; }
    void replaceStation(std::unique_ptr<Station> station);

    // Where messages go; without a window, pop-ups are recorded but not shown.
    void setWindow(QWidget* window, QStatusBar* statusBar, bool headless);
    // What plug-ins drew in the 3D view, kept until the next redraw.
    SceneDrawings& drawings() { return drawings_; }
    // Tells the plug-in that the view was redrawn (event 1): what it draws
    // now replaces what it drew before, also when it draws nothing.
    void sendRedrawn(IAppVorlik* plugin);
    // The 3D view, told of new drawings and joint sequences (of this station and the next ones).
    void setSceneListener(SceneListener* listener);

    // The answer to the next pickItem: an item, or null to cancel.
    void queuePick(SimItem* item) { picks_.push_back(item); }

    HostItem* getItem(const QString& name, int itemType) override;
    QList<Item>& getItemList(QList<Item>& out, int itemType) override;
    bool isValidItem(HostItem* item) override;
    HostItem* pickItem(const QString& message, int itemType) override;
    void showMessage(const QString& text, bool popup) override;
    HostItem* addTarget(const QString& name, HostItem* parent, HostItem* robot) override;
    HostItem* addProgram(const QString& name, HostItem* robot) override;
    void update(int flags) override;
    void setRenderMode(int mode) override;
    int collisions() override;
    QString& command(QString& out, const QString& name, const QString& value) override;
    QList<Item>& getSelectedItems(QList<Item>& out) override;
    QByteArray getDataParam(const QString& key) override;
    void setDataParam(const QString& key, const QByteArray& bytes) override;
    int renderMode() override;
    void drawGeometry(int primitive, const double* points, int pointCount, const float color[4],
                      float lineWidth, int flag) override;

private:
    void hostCalled();
    SimItem* live(HostItem* item, int type) const;
    SimItem* askUser(const QString& message, int itemType);

    std::unique_ptr<Station> station_;
    std::vector<std::unique_ptr<Station>> retired_;
    HostMonitor* monitor_;
    QWidget* window_ = nullptr;
    QStatusBar* statusBar_ = nullptr;
    bool headless_ = true;
    std::deque<SimItem*> picks_;
    SceneDrawings drawings_;
    SceneListener* scene_ = nullptr;
    int renderMode_ = 0;
};
