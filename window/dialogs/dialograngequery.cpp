#include "window/dialogs/dialograngequery.h"

#include "core/valueformat.h"
#include "ui_dialograngequery.h"
#include "window/common/localnumbers.h"
#include "window/common/programsettings.h"
#include "window/dialogs/checklabel.h"

#include <QLocale>
#include <QPushButton>
#include <QRegularExpression>
#include <cmath>

namespace tarvo::window {

namespace {

constexpr const char* settingsGroup = "DialogRangeQuery";
QString unreadable() {
    return QObject::tr("failed to parse center and/or radius!");
}

// Points are decimal marks by now; commas may mark groups.
const QLocale pointLocale("en");

// The base from the text (0x.., 0.., else decimal).
bool readWhole(const QString& text, qlonglong& number) {
    bool ok = false;
    number = pointLocale.toLongLong(withPoint(text).trimmed(), &ok);
    if (!ok)
        number = text.trimmed().toLongLong(&ok, 0);
    return ok;
}

bool readDecimal(const QString& text, double& number) {
    bool ok = false;
    number = pointLocale.toDouble(withPoint(text).trimmed(), &ok);
    return ok;
}

// Beyond all whole numbers of 64 bits; written out, larger ones have digits that nobody meant.
constexpr double largest = 2e19;
const QString largestText = "2e19";

// What is wrong with a number; empty: nothing, or it is none. A bound may also be an element.
QString findingOn(const QString& what, const QString& text) {
    double number = 0;
    bool isNumber = readDecimal(text, number);
    if (!isNumber)  // "nan" and "inf", which languages write otherwise
        number = text.trimmed().toDouble(&isNumber);
    if (!isNumber) {
        // Also what goes beyond the range of the type.
        static const QRegularExpression digits(
            "^[+-]?([0-9]+[.]?|[0-9]*[.][0-9]+)([eE][+-]?[0-9]+)?$");
        if (!digits.match(withPoint(text).trimmed()).hasMatch())
            return {};
        number = text.trimmed().contains("e-", Qt::CaseInsensitive) ? 0 : 2 * largest;
    }
    if (!std::isfinite(number))
        return QObject::tr("%0: \"%1\" is no value that a point can have. Enter a number.")
            .arg(what, text.trimmed());
    if (std::abs(number) > largest)
        return QObject::tr("%0: the number is too large. Enter one from -%1 to %1.")
            .arg(what, largestText);
    return {};
}

}  // namespace

DialogRangeQuery::DialogRangeQuery(const std::vector<qrb::pointcloud::PointAttribute>& attributes,
                                   QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::DialogRangeQuery>()), m_attributes(attributes) {
    m_ui->setupUi(this);
    for (std::size_t a = 0; a < m_attributes.size(); ++a) {
        const QString name = QString::fromStdString(m_attributes[a].name);
        const auto number = static_cast<qulonglong>(a);
        if (m_attributes[a].length == 1)
            m_ui->editPointAttribute->addItem(name, number);
        else
            for (std::uint32_t e = 0; e < m_attributes[a].length; ++e)
                m_ui->editPointAttribute->addItem(QString("%0[%1]").arg(name).arg(e), number);
    }
    connect(m_ui->tabWidgetMode, &QTabWidget::currentChanged, this,
            &DialogRangeQuery::updatePreview);
    for (QCheckBox* box :
         {m_ui->editLowerBoundInclusive, m_ui->editUpperBoundInclusive, m_ui->editRadiusInclusive})
        connect(box, &QCheckBox::toggled, this, &DialogRangeQuery::updatePreview);
    restore();
    on_editPointAttribute_currentIndexChanged(m_ui->editPointAttribute->currentIndex());
}

DialogRangeQuery::~DialogRangeQuery() = default;

void DialogRangeQuery::restore() {
    const ProgramSettings settings(settingsGroup);
    restoreGeometry(settings.value("Geometry").toByteArray());
    const int index =
        m_ui->editPointAttribute->findText(settings.value("PointAttribute").toString());
    if (index >= 0)
        m_ui->editPointAttribute->setCurrentIndex(index);
    m_ui->tabWidgetMode->setCurrentIndex(settings.value("Mode", 0).toInt());
    m_ui->editLowerBoundValue->setText(settings.value("LowerBoundValue").toString());
    m_ui->editUpperBoundValue->setText(settings.value("UpperBoundValue").toString());
    m_ui->editLowerBoundInclusive->setChecked(settings.value("LowerBoundInclusive", true).toBool());
    m_ui->editUpperBoundInclusive->setChecked(settings.value("UpperBoundInclusive", true).toBool());
    m_ui->editCenterValue->setText(settings.value("CenterValue").toString());
    m_ui->editRadiusValue->setText(settings.value("RadiusValue").toString());
    m_ui->editRadiusInclusive->setChecked(settings.value("RadiusInclusive", true).toBool());
}

void DialogRangeQuery::accept() {
    ProgramSettings settings(settingsGroup);
    settings.setValue("Geometry", saveGeometry());
    settings.setValue("PointAttribute", m_ui->editPointAttribute->currentText());
    settings.setValue("Mode", m_ui->tabWidgetMode->currentIndex());
    settings.setValue("LowerBoundValue", withPoint(m_ui->editLowerBoundValue->text()));
    settings.setValue("UpperBoundValue", withPoint(m_ui->editUpperBoundValue->text()));
    settings.setValue("LowerBoundInclusive", m_ui->editLowerBoundInclusive->isChecked());
    settings.setValue("UpperBoundInclusive", m_ui->editUpperBoundInclusive->isChecked());
    settings.setValue("CenterValue", withPoint(m_ui->editCenterValue->text()));
    settings.setValue("RadiusValue", withPoint(m_ui->editRadiusValue->text()));
    settings.setValue("RadiusInclusive", m_ui->editRadiusInclusive->isChecked());
    QDialog::accept();
}

const qrb::pointcloud::PointAttribute* DialogRangeQuery::attribute() const {
    const QVariant number = m_ui->editPointAttribute->currentData();
    return number.isValid() ? &m_attributes[number.toULongLong()] : nullptr;
}

QString DialogRangeQuery::expression() const {
    return m_ui->editPreview->toPlainText();
}

void DialogRangeQuery::on_editPointAttribute_currentIndexChanged(int) {
    const QString unit = attribute() ? QString::fromStdString(attribute()->unitSymbol) : QString();
    m_ui->labelLowerBound->setText(tr("&Lower Bound [%0]:").arg(unit));
    m_ui->labelUpperBound->setText(tr("&Upper Bound [%0]:").arg(unit));
    m_ui->labelCenter->setText(tr("&Center [%0]:").arg(unit));
    m_ui->labelRadius->setText(tr("&Radius [%0]:").arg(unit));
    updatePreview();
}

void DialogRangeQuery::on_editLowerBoundValue_textChanged(const QString&) {
    updatePreview();
}

void DialogRangeQuery::on_editUpperBoundValue_textChanged(const QString&) {
    updatePreview();
}

void DialogRangeQuery::on_editCenterValue_textChanged(const QString&) {
    updatePreview();
}

void DialogRangeQuery::on_editRadiusValue_textChanged(const QString&) {
    updatePreview();
}

// A bound that is left empty limits nothing.
QString DialogRangeQuery::boundsExpression(const QString& attribute) const {
    QStringList parts;
    const auto add = [&](const char* compare, const QLineEdit* value, const QCheckBox* inclusive) {
        if (!value->text().trimmed().isEmpty())
            parts += QString("(%0 %1%2 %3)")
                         .arg(attribute, compare, inclusive->isChecked() ? "=" : "",
                              withPoint(value->text()));
    };
    add(">", m_ui->editLowerBoundValue, m_ui->editLowerBoundInclusive);
    add("<", m_ui->editUpperBoundValue, m_ui->editUpperBoundInclusive);
    return parts.join(" && ");
}

QString DialogRangeQuery::centerExpression(const QString& text) const {
    const QString equal = m_ui->editRadiusInclusive->isChecked() ? "=" : "";
    QString lower;
    QString upper;
    qlonglong wholeCenter = 0;
    qlonglong wholeRadius = 0;
    double center = 0;
    double radius = 0;
    qlonglong least = 0;
    qlonglong greatest = 0;
    if (readWhole(m_ui->editCenterValue->text(), wholeCenter) &&
        readWhole(m_ui->editRadiusValue->text(), wholeRadius) &&
        !__builtin_sub_overflow(wholeCenter, wholeRadius, &least) &&
        !__builtin_add_overflow(wholeCenter, wholeRadius, &greatest)) {
        lower = QString::number(least);
        upper = QString::number(greatest);
    } else if (readDecimal(m_ui->editCenterValue->text(), center) &&
               readDecimal(m_ui->editRadiusValue->text(), radius)) {
        const int decimals = attribute() ? core::decimalsOfResolution(attribute()->resolution) : 0;
        lower = QString::number(center - radius, 'f', decimals);
        upper = QString::number(center + radius, 'f', decimals);
    } else {
        return unreadable();
    }
    return QString("(%0 >%1 %2) && (%0 <%1 %3)").arg(text, equal, lower, upper);
}

// Of the tab in front.
QString DialogRangeQuery::finding() const {
    const auto onBoth = [](const QString& first, const QLineEdit* one, const QString& second,
                           const QLineEdit* other) {
        const QString finding = findingOn(first, one->text());
        return finding.isEmpty() ? findingOn(second, other->text()) : finding;
    };
    if (m_ui->tabWidgetMode->currentIndex() == 0)
        return onBoth(tr("Lower Bound"), m_ui->editLowerBoundValue, tr("Upper Bound"),
                      m_ui->editUpperBoundValue);
    double radius = 0;
    if (readDecimal(m_ui->editRadiusValue->text(), radius) && radius < 0)
        return tr("Radius: it is negative. Enter 0 or more.");
    return onBoth(tr("Center"), m_ui->editCenterValue, tr("Radius"), m_ui->editRadiusValue);
}

void DialogRangeQuery::updatePreview() {
    const QString wrong = finding();
    const bool isBounds = m_ui->tabWidgetMode->currentIndex() == 0;
    showCheck(m_ui->labelBoundsCheck, isBounds ? wrong : QString(), CheckKind::ERROR);
    showCheck(m_ui->labelCenterCheck, isBounds ? QString() : wrong, CheckKind::ERROR);
    const QString name = m_ui->editPointAttribute->currentText();
    QString preview;
    if (wrong.isEmpty())
        preview = isBounds ? boundsExpression(name) : centerExpression(name);
    m_ui->editPreview->setPlainText(preview);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)
        ->setEnabled(!preview.isEmpty() && preview != unreadable());
}

}  // namespace tarvo::window
