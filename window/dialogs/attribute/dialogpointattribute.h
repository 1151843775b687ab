// Edits the definition of a point attribute: every field of the record, checked while one types,
// and the default catalogue to take definitions from.
#pragma once

#include "core/attributerules.h"
#include "qrb/pointattribute.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <QStringList>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace tarvo::window {

namespace Ui {
class DialogPointAttribute;
}

class DialogPointAttribute : public QDialog {
    Q_OBJECT

public:
    enum class Purpose {
        ADD,
        EDIT,      // the name is fixed
        PRIMARY,   // of a database to be created
        EDIT_KEY,  // as EDIT, of the primary attribute or the point id: points are found by its
                   // values, so that those can't change
    };

    // Runs the dialog on the record, which is changed only when it is accepted; that is what the
    // result tells. takenNames: names that a new attribute can't have. stored: of an attribute to
    // be edited the definition in the database, where that is not the record that the dialog begins
    // with. readOnly: nothing can be stored, which the dialog tells; it is never accepted. Needs
    // the library; throws qrb::Error.
    static bool edit(qrb::pointcloud::PointAttribute& attribute, Purpose purpose,
                     const QStringList& takenNames, QWidget* parent,
                     const qrb::pointcloud::PointAttribute* stored = nullptr,
                     bool readOnly = false);

    ~DialogPointAttribute() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private slots:
    void on_editSuggestionFilter_textChanged(const QString& text);
    void on_treeSuggestions_itemClicked(QTreeWidgetItem* item, int column);
    void on_buttonSuggestions_toggled(bool shown);
    void on_boxNoInvalidValue_toggled(bool none);
    void on_buttonNamedValues_clicked();
    void on_buttonLodSettings_clicked();
    void on_actionPaste_triggered();
    void on_actionLoad_triggered();
    void on_actionSave_triggered();
    void onCopyToClipboard();
    void onMenuAboutToShow();

private:
    using PointAttribute = qrb::pointcloud::PointAttribute;

    DialogPointAttribute(Purpose purpose, const QStringList& takenNames, QWidget* parent);
    void buildFields();
    void buildMenu();
    void buildSuggestions(const QStringList& takenNames);
    bool isEditing() const;
    void fitForm();

    void fill(const PointAttribute& attribute);
    // Fields that show what was filled in give that back bit for bit. What is no number becomes
    // NaN, as invalid value infinity, so that the checks find it.
    PointAttribute read() const;
    // The texts that the fields show, in the order of ShownText.
    QStringList shownTexts() const;
    bool isTyped() const;
    // Fills in a definition from elsewhere; the user is asked where typed texts would get lost.
    void take(PointAttribute attribute, const QString& question);
    void takeSuggestion(const QTreeWidgetItem* row);
    // A record from JSON text or such a text quoted as a JSON string; nothing where it is none.
    std::optional<PointAttribute> readJson(const std::string& text) const;

    void showNamedValues();
    void updateChecks();
    std::vector<core::AttributeFinding> findings(const PointAttribute& attribute);
    void showFindings(const std::vector<core::AttributeFinding>& findings);

    std::unique_ptr<Ui::DialogPointAttribute> m_ui;
    DialogSettings m_settings;
    Purpose m_purpose;
    core::AttributeUse m_use;
    std::optional<PointAttribute> m_stored;  // what m_use refers to
    PointAttribute m_filled;                 // what the fields were filled with
    QStringList m_filledTexts;
    std::string m_namedValues;
    bool m_readOnly = false;
    bool m_typedBefore = false;  // what the dialog began with had been typed by the user
    bool m_filling = false;
    bool m_validGrid = false;
};

}  // namespace tarvo::window
