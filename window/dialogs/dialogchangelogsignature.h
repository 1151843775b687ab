// Verifies the signature at the end of one changelog entry with the user's key.
#pragma once

#include "window/dialogs/dialogsignature.h"

namespace tarvo::window {

class DialogChangelogSignature : public DialogSignature {
    Q_OBJECT

public:
    // entry: the text from its header to the end of the signature.
    DialogChangelogSignature(const QString& entry, QWidget* parent);

private slots:
    void on_buttonVerify_clicked();

private:
    QString m_entry;
};

}  // namespace tarvo::window
