// Asks how the changelog entry of a commit is to be signed. Commits nothing itself.
#pragma once

#include "window/dialogs/dialogsignature.h"

namespace tarvo::window {

class DialogTransactionCommit : public DialogSignature {
    Q_OBJECT

public:
    explicit DialogTransactionCommit(QWidget* parent);

private slots:
    void on_editMethod_currentIndexChanged(int index);
};

}  // namespace tarvo::window
