// What the signature dialogs have in common: a method, a key in hexadecimal pairs, and the memory
// of both, per dialog class.
#pragma once

#include "window/common/programsettings.h"

#include <QDialog>
#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

class QPushButton;

namespace tarvo::window {

namespace Ui {
class DialogSignature;
}

class DialogSignature : public QDialog {
    Q_OBJECT

public:
    ~DialogSignature() override;

    std::uint32_t method() const;
    // What the key text holds: characters that are no hexadecimal digits are skipped.
    std::vector<std::uint8_t> key() const;

protected:
    // settingsGroup: the class name of the dialog. Shows no name row without a label.
    DialogSignature(const QString& settingsGroup, const QString& nameLabel, const QString& name,
                    QWidget* parent);

    // To be called in this order while constructing: the methods, then what was remembered.
    void addMethod(const QString& text, std::uint32_t method);
    void restore();
    QPushButton* addButton(const QString& name, const QString& text);
    void addCloseButton();
    void setKeyEnabled(bool enabled);

    void tellVerified();  // and closes the dialog
    void tellNotVerified();

    Ui::DialogSignature& ui() { return *m_ui; }

private slots:
    void on_editKey_textChanged();
    void on_buttonRandomKey_clicked();
    void on_buttonLoadKey_clicked();
    void on_buttonSaveKey_clicked();
    void on_buttonForgetKey_clicked();

private:
    QByteArray keyBytes() const;
    // Shows the key as rows of eight pairs.
    void showKey(const QByteArray& bytes);

    std::unique_ptr<Ui::DialogSignature> m_ui;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
