// The "Meta Data" tab: the metadata items of the database.
#pragma once

#include "window/panels/panel.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace tarvo::window {

class FindBar;
class HeaderMemory;

namespace Ui {
class MetaDataPanel;
}

class MetaDataPanel : public Panel {
    Q_OBJECT

public:
    MetaDataPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~MetaDataPanel() override;

    void refresh() override;
    QAction* findAction() const override;

protected:
    void changeEvent(QEvent* event) override;

private slots:
    void on_treeMetaData_itemSelectionChanged();
    void on_treeMetaData_itemDoubleClicked(QTreeWidgetItem* item, int column);
    void on_actionMetaDataAdd_triggered();
    void on_actionMetaDataEdit_triggered();
    void on_actionMetaDataRemove_triggered();
    void on_actionMetaDataFind_triggered();
    void on_actionMetaDataSignature_triggered();
    void on_actionMetaDataExport_triggered();
    void on_actionMetaDataImport_triggered();

private:
    void addRow(const std::string& name);
    // The names of signed items have a colour, which keeps to the theme.
    void colourName(QTreeWidgetItem* row) const;
    void editItem(QString name, bool isNew);
    bool mayWriteOver(const QString& name, const std::optional<std::string>& read);
    // The names of the selected items, in the order of their selection.
    std::vector<std::string> selectedItems() const;
    QString proposedFileName() const;
    void importItems(const QString& fileName);

    std::unique_ptr<Ui::MetaDataPanel> m_ui;
    HeaderMemory* m_headerMemory = nullptr;
    FindBar* m_findBar = nullptr;
};

}  // namespace tarvo::window
