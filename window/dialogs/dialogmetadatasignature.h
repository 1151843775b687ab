// Verifies, creates and deletes the signature of one metadata item. Changes need a pending
// transaction, which is the caller's business.
#pragma once

#include "qrb/pointcloud.h"
#include "window/dialogs/dialogsignature.h"

namespace tarvo::window {

class DialogMetaDataSignature : public DialogSignature {
    Q_OBJECT

public:
    // The database must stay open as long as the dialog lives.
    DialogMetaDataSignature(const qrb::Pointcloud& database, const QString& item, QWidget* parent);

    // Whether the database was changed.
    bool changed() const { return m_changed; }

private slots:
    void on_buttonVerify_clicked();
    void on_buttonCreate_clicked();
    void on_buttonDelete_clicked();

private:
    bool isSigned() const;

    const qrb::Pointcloud& m_database;
    std::string m_item;
    bool m_changed = false;
};

}  // namespace tarvo::window
