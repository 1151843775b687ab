// What a plugin gave as its answer, on a page of its own, to be read, copied and saved.
#pragma once

#include "window/dialogs/plugin/pluginrun.h"

#include <QString>
#include <QWidget>
#include <memory>

class QHBoxLayout;

namespace tarvo::window {

class ResultPage : public QWidget {
    Q_OBJECT

public:
    // folder: where files are saved if nothing else is chosen.
    ResultPage(std::shared_ptr<const PluginResult> result, const QString& folder,
               QWidget* parent = nullptr);

    // The title of the result, or what it is.
    QString title() const;

private:
    QWidget* createView();
    QWidget* createText();
    QWidget* createHtml();
    QWidget* createPicture();
    QWidget* createFile();
    void addButton(const QString& name, const QString& text, void (ResultPage::*slot)());
    void copy();
    void save();
    void openFolder();

    const std::shared_ptr<const PluginResult> m_result;
    const QString m_folder;
    QHBoxLayout* m_buttons;
    QWidget* m_view;
};

}  // namespace tarvo::window
