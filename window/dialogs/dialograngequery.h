// Builds a filter expression that limits one element of a point attribute to a range.
#pragma once

#include "qrb/pointattribute.h"

#include <QDialog>
#include <QString>
#include <memory>
#include <vector>

namespace tarvo::window {

namespace Ui {
class DialogRangeQuery;
}

class DialogRangeQuery : public QDialog {
    Q_OBJECT

public:
    DialogRangeQuery(const std::vector<qrb::pointcloud::PointAttribute>& attributes,
                     QWidget* parent);
    ~DialogRangeQuery() override;

    // The expression previewed.
    QString expression() const;

public slots:
    // Remembers what was entered.
    void accept() override;

private slots:
    void on_editPointAttribute_currentIndexChanged(int index);
    void on_editLowerBoundValue_textChanged(const QString& text);
    void on_editUpperBoundValue_textChanged(const QString& text);
    void on_editCenterValue_textChanged(const QString& text);
    void on_editRadiusValue_textChanged(const QString& text);

private:
    void restore();
    void updatePreview();
    QString finding() const;
    QString boundsExpression(const QString& attribute) const;
    QString centerExpression(const QString& attribute) const;
    const qrb::pointcloud::PointAttribute* attribute() const;

    std::unique_ptr<Ui::DialogRangeQuery> m_ui;
    std::vector<qrb::pointcloud::PointAttribute> m_attributes;
};

}  // namespace tarvo::window
