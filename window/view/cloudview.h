// The dock "Point Cloud View": the points of the open database as a picture that can be moved. It
// reads through a stream of its own, which sees the committed state and lives only while the view
// is seen.
#pragma once

#include "qrb/pointcloud.h"
#include "view/stream.h"
#include "window/view/cloudcanvas.h"
#include "window/view/viewactions.h"

#include <QDockWidget>
#include <QTimer>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_set>

class QMenu;
class QToolBar;

namespace tarvo::window {

class PointDetails;
class ViewControls;

class CloudView : public QDockWidget {
    Q_OBJECT

public:
    // What the rest of the window knows; asked when it is wanted.
    struct Sources {
        // Whether the database's file still is the one that was opened.
        std::function<bool()> isThere;
        std::function<QString()> filter;  // as it stands
        std::function<drawing::Box()>
            chosen;  // extent of the points that are selected; may be empty
    };

    CloudView(Sources sources, QWidget* parent);
    ~CloudView() override;

    // Shows the database; null: none. What was shown before of the same one is read again where its
    // committed state may be another. isPending: it has a transaction that is not.
    void refresh(const std::shared_ptr<qrb::Pointcloud>& database, const QString& fileName,
                 bool isPending);
    // Lets go of the database, and waits for what reads it.
    void drop();
    // The filter was run; it counts where the view filters.
    void filterRun(const QString& filter);
    // Marks a point by a ring; none: takes the mark away.
    void markPoint(const std::optional<drawing::Vector>& place);
    // Marks a node of the index by its box; 0: takes the mark away.
    void markNode(std::uint32_t node);

    // The actions of the view, for a menu that the caller owns.
    void addActionsTo(QMenu* menu) const;

signals:
    // A point was clicked that is in the database.
    void pointPicked(qulonglong id);
    // An area became a filter. told: what to know of it.
    void filterChosen(const QString& filter, const QString& told);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void createContents();
    QToolBar* createToolBar(const char* name, const QString& title, const QList<QAction*>& actions);
    void createRenderer();
    void drawPlainly(const QString& reason);
    void start();
    void stop();
    void applySettings();
    void takeNews();
    void takeScene(const std::shared_ptr<const view::StreamScene>& scene);
    void takeLegend(const CloudCanvas::Blocks& blocks);
    QStringList stateLines(const view::StreamPicture& picture) const;
    void showState();
    void applyGround();
    void showNodeBox();
    void pick(const std::optional<PickedPoint>& point);
    void chooseArea(CloudCanvas::Area area, const std::vector<std::array<double, 2>>& corners);
    void showChosen();

    Sources m_sources;
    CloudCanvas* m_canvas = nullptr;
    ViewControls* m_controls = nullptr;
    PointDetails* m_details = nullptr;
    ViewActions m_actions{};

    std::weak_ptr<qrb::Pointcloud> m_database;
    QString m_fileName;
    bool m_isPending = false;
    QString m_filter;       // that was run, or stood there when filtering was chosen
    QString m_plainReason;  // why there is no OpenGL; empty: there is
    bool m_hasRenderer = false;
    std::uint32_t m_node = 0;  // marked; 0: none
    bool m_isNodeChosenLast = false;

    std::atomic<bool> m_isNewsSent = false;
    std::shared_ptr<const view::StreamScene> m_scene;
    std::shared_ptr<const view::Colouring> m_colouring;
    std::vector<drawing::Colour> m_usedColours;                       // of a palette
    std::vector<std::shared_ptr<const view::PointBlock>> m_searched;  // for used colours
    QTimer m_hidden;                              // stops the stream a while after that
    std::unique_ptr<view::PointStream> m_stream;  // null: not reading
};

}  // namespace tarvo::window
