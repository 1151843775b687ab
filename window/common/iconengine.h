// Icons that stay visible on every ground. Each icon of the program is there twice, for light and
// for dark grounds; which one is drawn follows the application's palette at the moment of drawing,
// so that icons need no care when the theme changes. In selected rows the icon has the colour of
// the text there. Forms and code name the icon for light grounds, ":/resources/gui/NAME.png".
#pragma once

#include <QIconEngine>
#include <QIconEnginePlugin>
#include <QImage>

namespace tarvo::window {

class IconEngine : public QIconEngine {
public:
    explicit IconEngine(const QString& fileName);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    // size: in pixels of the screen.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    void addFile(const QString&, const QSize&, QIcon::Mode, QIcon::State) override {}
    QString key() const override { return "tarvo"; }
    QIconEngine* clone() const override { return new IconEngine(*this); }
    bool isNull() override { return m_fileName.isEmpty(); }

private:
    QImage picture(bool onDark, int side) const;

    QString m_fileName;
};

// Makes the engines for files under ":/resources/gui"; other icons keep the toolkit's.
class IconEnginePlugin : public QIconEnginePlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QIconEngineFactoryInterface_iid FILE "iconengine.json")

public:
    QIconEngine* create(const QString& fileName = {}) override;
};

}  // namespace tarvo::window
