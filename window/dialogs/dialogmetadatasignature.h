// Verifies, creates and deletes the signature of one metadata item. Changes need a pending
// transaction, for which the caller is asked.
#pragma once

#include "qrb/pointcloud.h"
#include "window/dialogs/dialogsignature.h"

#include <functional>

namespace tarvo::window {

class DialogMetaDataSignature : public DialogSignature {
    Q_OBJECT

public:
    // Gets a title; tells whether a transaction is pending then.
    using InTransaction = std::function<bool(const QString& title)>;

    // The database must stay open as long as the dialog lives.
    DialogMetaDataSignature(const qrb::Pointcloud& database, const QString& item,
                            InTransaction inTransaction, QWidget* parent);

    // Whether the database was changed.
    bool changed() const { return m_changed; }

private slots:
    void on_buttonVerify_clicked();
    void on_buttonCreate_clicked();
    void on_buttonDelete_clicked();

private:
    bool isSigned() const;
    void showState();

    const qrb::Pointcloud& m_database;
    std::string m_item;
    InTransaction m_inTransaction;
    bool m_changed = false;
};

}  // namespace tarvo::window
