#include "window/view/cloudview.h"

#include "core/valueformat.h"
#include "window/common/guard.h"
#include "window/common/theme.h"
#include "window/view/glrenderer.h"
#include "window/view/plainrenderer.h"
#include "window/view/pointdetails.h"
#include "window/view/viewcontrols.h"
#include "window/widgets/splittermemory.h"

#include <QMenu>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace tarvo::window {

namespace {

// Milliseconds for which a dock that floats or moves may be unseen.
constexpr int hiddenTime = 1000;

}  // namespace

CloudView::CloudView(Sources sources, QWidget* parent)
    : QDockWidget(tr("Point Cloud View"), parent), m_sources(std::move(sources)) {
    setObjectName("dockPointCloudView");
    createContents();
    toggleViewAction()->setObjectName("actionViewPointCloud");
    toggleViewAction()->setToolTip(
        "<html><body><p>" + tr("Show the points of the database as a picture [Ctrl+Shift+P]") +
        "</p></body></html>");
    toggleViewAction()->setShortcut(QKeySequence("Ctrl+Shift+P"));
    m_hidden.setSingleShot(true);
    m_hidden.setInterval(hiddenTime);
    connect(&m_hidden, &QTimer::timeout, this, &CloudView::stop);
    connect(m_canvas, &CloudCanvas::looked, this, [this] {
        if (m_stream && m_scene)
            m_stream->look(m_canvas->camera());
    });
    connect(m_canvas, &CloudCanvas::picked, this, &CloudView::pick);
    connect(m_canvas, &CloudCanvas::areaChosen, this, &CloudView::chooseArea);
    connect(m_canvas, &CloudCanvas::failed, this, &CloudView::drawPlainly);
    connect(m_actions.chosen, &QAction::triggered, this, &CloudView::showChosen);
    connect(m_controls, &ViewControls::colourChanged, this, &CloudView::applySettings);
    connect(m_controls, &ViewControls::filterUseChanged, this, [this] {
        m_filter = m_sources.filter();
        applySettings();
    });
    connect(m_controls, &ViewControls::groundChanged, this, &CloudView::applyGround);
    connect(m_controls, &ViewControls::pointSizeChanged, m_canvas, &CloudCanvas::setPointSize);
    m_canvas->setPointSize(m_controls->pointSize());
    applyGround();
    showState();
    hide();
}

CloudView::~CloudView() {
    stop();
}

void CloudView::createContents() {
    auto* contents = new QWidget(this);
    auto* splitter = new QSplitter(Qt::Vertical, contents);
    splitter->setObjectName("splitterPointCloudView");
    splitter->setChildrenCollapsible(false);
    m_canvas = new CloudCanvas(splitter);
    m_canvas->setAccessibleName(tr("Point cloud"));
    m_canvas->setToolTip({});
    m_details = new PointDetails(splitter);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    rememberSplitter(splitter);
    m_actions = createViewActions(m_canvas);
    m_controls = new ViewControls(contents);
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(createToolBar("toolBarViewSides", tr("Sides"),
                                    {m_actions.top, m_actions.front, m_actions.side,
                                     m_actions.corner, nullptr, m_actions.perspective}));
    layout->addWidget(createToolBar(
        "toolBarViewExtents", tr("Extents and areas"),
        {m_actions.all, m_actions.chosen, nullptr, m_actions.rectangle, m_actions.polygon}));
    layout->addWidget(m_controls);
    layout->addWidget(splitter, 1);
    setWidget(contents);
}

// Null: a separator. Zooming has the wheel and the keys.
QToolBar* CloudView::createToolBar(const char* name, const QString& title,
                                   const QList<QAction*>& actions) {
    auto* bar = new QToolBar(title, this);
    bar->setObjectName(name);
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (QAction* action : actions)
        action ? bar->addAction(action) : static_cast<void>(bar->addSeparator());
    for (QToolButton* button : bar->findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::TabFocus);
    return bar;
}

void CloudView::addActionsTo(QMenu* menu) const {
    menu->addActions(m_actions.list());
}

void CloudView::createRenderer() {
    if (m_hasRenderer)
        return;
    m_hasRenderer = true;
    if (auto renderer = GlRenderer::make(m_plainReason))
        m_canvas->setRenderer(std::move(renderer));
    else
        m_canvas->setRenderer(std::make_unique<PlainRenderer>());
}

void CloudView::drawPlainly(const QString& reason) {
    m_plainReason = reason;
    m_canvas->setRenderer(std::make_unique<PlainRenderer>());
    showState();
}

void CloudView::refresh(const std::shared_ptr<qrb::Pointcloud>& database, const QString& fileName,
                        bool isPending) {
    const bool isAnother = m_database.lock() != database;
    if (isAnother)
        drop();
    m_database = database;
    m_fileName = database ? fileName : QString();
    m_isPending = isPending;
    if (isAnother) {
        m_filter = m_sources.filter();
        if (isVisible())
            start();
    } else if (m_stream && !isPending && m_sources.isThere()) {
        m_stream->reload();
    }
    showState();
}

void CloudView::drop() {
    stop();
    m_database.reset();
    m_fileName.clear();
    m_isPending = false;
    m_node = 0;
    m_canvas->setMarked(std::nullopt);
    m_canvas->setSpace({}, {}, 0);
    m_controls->clear();
    m_details->clear();
    showState();
}

void CloudView::start() {
    m_hidden.stop();
    if (m_stream || m_database.expired() || !m_sources.isThere())
        return;
    createRenderer();
    // From the stream's thread: of many news one is told.
    m_stream = std::make_unique<view::PointStream>([this] {
        if (!m_isNewsSent.exchange(true))
            QMetaObject::invokeMethod(this, &CloudView::takeNews, Qt::QueuedConnection);
    });
    applySettings();
}

void CloudView::stop() {
    m_stream.reset();
    m_scene.reset();
    m_colouring.reset();
    m_searched.clear();
    m_usedColours.clear();
    m_canvas->dropBlocks();
    m_canvas->setNodeBox({});
}

void CloudView::applySettings() {
    if (!m_stream)
        return;
    view::StreamSettings settings;
    settings.fileName = m_fileName.toStdString();
    settings.colour = m_controls->colour();
    const FilterUse use = m_controls->filterUse();
    if (use != FilterUse::OFF)
        settings.filter = m_filter.trimmed().toStdString();
    settings.unmatched = use == FilterUse::FADE ? view::Unmatched::Faded : view::Unmatched::Hidden;
    m_stream->show(settings);
}

void CloudView::filterRun(const QString& filter) {
    m_filter = filter;
    if (m_controls->filterUse() != FilterUse::OFF)
        applySettings();
}

void CloudView::takeNews() {
    m_isNewsSent = false;
    if (!m_stream)
        return;
    if (const auto scene = m_stream->scene(); scene && scene != m_scene)
        takeScene(scene);
    auto picture = m_stream->picture();
    takeLegend(picture.blocks);
    showNodeBox();
    m_canvas->setState(stateLines(picture));
    m_canvas->setBlocks(std::move(picture.blocks));
}

void CloudView::takeScene(const std::shared_ptr<const view::StreamScene>& scene) {
    const bool isFirst = !m_scene;
    m_scene = scene;
    int places = 3;
    if (const auto database = m_database.lock())
        guarded(this, [&] {
            const auto& attributes = database->pointAttributes();
            if (attributes.exists(scene->space.attribute))
                places =
                    core::decimalsOfResolution(attributes.get(scene->space.attribute).resolution);
        });
    m_canvas->setSpace(scene->space.extent, QString::fromStdString(scene->space.unit),
                       std::min(places, 9));
    if (isFirst || scene->colouring != m_colouring) {
        m_controls->setChoices(*scene);
        m_controls->setRange(*scene->colouring);
        m_colouring = scene->colouring;
        m_searched.clear();
        m_usedColours.clear();
    }
    // The colours that were chosen last, where the database has them.
    if (isFirst)
        applySettings();
    m_stream->look(m_canvas->camera());
}

// Which of a palette's colours occur: each block is searched once.
void CloudView::takeLegend(const CloudCanvas::Blocks& blocks) {
    if (!m_colouring) {
        m_canvas->setLegend({});
        return;
    }
    if (!m_colouring->legend().empty()) {
        const std::unordered_set<std::shared_ptr<const view::PointBlock>> known(m_searched.begin(),
                                                                                m_searched.end());
        for (const auto& block : blocks) {
            if (known.contains(block))
                continue;
            drawing::Colour before{0, 0, 0, 0};
            for (const drawing::Colour& colour : block->colours) {
                if (colour == before || colour.alpha < 255)
                    continue;
                before = colour;
                if (std::find(m_usedColours.begin(), m_usedColours.end(), colour) ==
                    m_usedColours.end())
                    m_usedColours.push_back(colour);
            }
        }
        m_searched = blocks;
    }
    m_canvas->setLegend(legendOf(*m_colouring, m_usedColours));
}

void CloudView::applyGround() {
    const Ground ground = m_controls->ground();
    const bool isDarkGround =
        ground == Ground::DARK || (ground == Ground::THEME && isDark(palette()));
    m_canvas->setGround(isDarkGround ? QColor("#1e1f22") : QColor("#ffffff"));
}

void CloudView::changeEvent(QEvent* event) {
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_canvas)
        applyGround();
}

void CloudView::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    start();
    showState();
}

void CloudView::hideEvent(QHideEvent* event) {
    QDockWidget::hideEvent(event);
    m_hidden.start();
}

}  // namespace tarvo::window
