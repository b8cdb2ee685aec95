// Editors per type, their writes, and the row following the device's snapshots.
#include "FeatureRow.h"
#include "ParameterPrinter.h"
#include <GenApi/GenApi.h>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <limits>
#include <parametercollection/BooleanParameterData.h>
#include <parametercollection/EnumParameterData.h>
#include <parametercollection/Exceptions.h>
#include <parametercollection/FloatParameterData.h>
#include <parametercollection/IBooleanParameter.h>
#include <parametercollection/ICommandParameter.h>
#include <parametercollection/IEnumParameter.h>
#include <parametercollection/IFloatParameter.h>
#include <parametercollection/IIntegerParameter.h>
#include <parametercollection/IStringParameter.h>
#include <parametercollection/IntegerParameterData.h>

using namespace ParameterCollection;

namespace {

int clampedToInt(qint64 value) {
    return static_cast<int>(
        std::clamp<qint64>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

void showInteger(QSpinBox* spin, const IntegerParameterData& data) {
    spin->setRange(clampedToInt(data.minimum), clampedToInt(data.maximum));
    spin->setSingleStep(clampedToInt(qMax<qint64>(1, data.increment)));
    spin->setValue(clampedToInt(data.value));
}

void showFloat(QDoubleSpinBox* spin, const FloatParameterData& data) {
    spin->setDecimals(static_cast<int>(std::clamp<qint64>(data.displayPrecision, 0, 12)));
    spin->setRange(data.minimum, data.maximum);
    spin->setSingleStep(data.hasIncrement ? data.increment : (data.maximum - data.minimum) / 100.0);
    spin->setValue(data.value);
}

void showEnumeration(QComboBox* combo, const EnumParameterData& data) {
    combo->clear();
    for (int i = 0; i < data.settableValues.size(); ++i)
        combo->addItem(data.settableValueDisplayNames.value(i, data.settableValues[i]),
                       data.settableValues[i]);
    if (combo->findData(data.valueText) < 0)
        combo->addItem(data.valueDisplayName.isEmpty() ? data.valueText : data.valueDisplayName,
                       data.valueText);
    combo->setCurrentIndex(combo->findData(data.valueText));
}

}  // namespace

CFeatureRow::CFeatureRow(QSharedPointer<IParameter> parameter, QTreeWidgetItem* item)
    : m_Parameter(parameter), m_Item(item) {
    m_Unit = m_Parameter->getAdvancedParameterAccess()->getPropertyOrDefault("Unit", QString());
    // Emitted on the decoupler's thread; queued here, to the thread of the tree.
    connect(m_Parameter.data(), &IParameter::parameterDataChangedDecoupled, this,
            [this](QSharedPointer<const ParameterData>) { refresh(); });
}

CFeatureRow::~CFeatureRow() = default;

QWidget* CFeatureRow::integerEditor() {
    auto spin = new QSpinBox;
    auto integer = m_Parameter.dynamicCast<IIntegerParameter>();
    connect(spin, &QSpinBox::editingFinished, this, [this, spin, integer] {
        if (spin->value() != integer->getValueOrDefault(spin->value()))
            write([&] { integer->setValue(spin->value(), true); });
    });
    return spin;
}

QWidget* CFeatureRow::floatEditor() {
    auto spin = new QDoubleSpinBox;
    auto floating = m_Parameter.dynamicCast<IFloatParameter>();
    connect(spin, &QDoubleSpinBox::editingFinished, this, [this, spin, floating] {
        if (spin->text() != spin->textFromValue(floating->getValueOrDefault(spin->value())))
            write([&] { floating->setValue(spin->value()); });
    });
    return spin;
}

QWidget* CFeatureRow::enumerationEditor() {
    auto combo = new QComboBox;
    auto enumeration = m_Parameter.dynamicCast<IEnumParameter>();
    connect(combo, QOverload<int>::of(&QComboBox::activated), this, [this, combo, enumeration](int index) {
        write([&] { enumeration->setValue(combo->itemData(index).toString()); });
    });
    return combo;
}

QWidget* CFeatureRow::booleanEditor() {
    auto check = new QCheckBox;
    auto boolean = m_Parameter.dynamicCast<IBooleanParameter>();
    connect(check, &QCheckBox::toggled, this,
            [this, boolean](bool on) { write([&] { boolean->setValue(on, true); }); });
    return check;
}

QWidget* CFeatureRow::commandEditor() {
    auto button = new QPushButton(tr("Execute"));
    auto command = m_Parameter.dynamicCast<ICommandParameter>();
    connect(button, &QPushButton::clicked, this, [this, command] {
        write([&] { command->execute(true); });
        watchCommandUntilDone();
    });
    return button;
}

QWidget* CFeatureRow::stringEditor() {
    auto line = new QLineEdit;
    auto string = m_Parameter.dynamicCast<IStringParameter>();
    connect(line, &QLineEdit::editingFinished, this, [this, line, string] {
        if (line->text() != string->getValueOrDefault(line->text()))
            write([&] { string->setValue(line->text()); });
    });
    return line;
}

QWidget* CFeatureRow::editorForType() {
    switch (m_Parameter->getParameterType()) {
        case ParameterType_Integer:
            return integerEditor();
        case ParameterType_Float:
            return floatEditor();
        case ParameterType_Enumeration:
            return enumerationEditor();
        case ParameterType_Boolean:
            return booleanEditor();
        case ParameterType_Command:
            return commandEditor();
        case ParameterType_String:
            return stringEditor();
        default:
            return new QLabel;
    }
}

void CFeatureRow::createEditor() {
    QWidget* editor = editorForType();
    editor->setObjectName(m_Parameter->getName());
    editor->setAutoFillBackground(true);
    m_Editor = editor;
    m_Item->treeWidget()->setItemWidget(m_Item, ValueColumn, editor);
    refresh();
}

// The device's answer wins: after a refused write the editor shows the device's value again.
void CFeatureRow::write(const std::function<void()>& change) {
    try {
        change();
    } catch (const Core::Exception::BaseException& error) {
        emit refused(m_Parameter->getName() + ": " + error.getMessage());
    } catch (const GenICam::GenericException& error) {
        emit refused(m_Parameter->getName() + ": " + QString::fromUtf8(error.GetDescription()));
    }
    refresh();
}

void CFeatureRow::watchCommandUntilDone() {
    auto command = m_Parameter.dynamicCast<ICommandParameter>();
    if (!m_Editor || !command)
        return;
    m_Editor->setEnabled(false);
    auto timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this, timer, command] {
        bool done = true;
        try {
            done = command->isDone();
        } catch (const Core::Exception::BaseException&) {
        }
        if (done) {
            timer->deleteLater();
            refresh();
        }
    });
    timer->start(50);
}

void CFeatureRow::refresh() {
    try {
        showSnapshot(*m_Parameter->getParameterData());
    } catch (const Core::Exception::BaseException& error) {
        m_Item->setText(AccessColumn, QStringLiteral("NA"));
        m_Item->setToolTip(ValueColumn, error.getMessage());
        if (m_Editor)
            m_Editor->setEnabled(false);
    }
    emit refreshed(this);
}

void CFeatureRow::showSnapshot(const ParameterData& data) {
    m_Item->setText(UnitColumn, m_Unit);
    m_Item->setText(AccessColumn,
                    CParameterPrinter::accessText(data.isImplemented, data.isReadable, data.isWriteable));
    m_Item->setData(ValueColumn, Qt::UserRole, data.valueText);
    m_Item->setToolTip(ValueColumn, data.valueText);
    if (!m_Editor)
        return;
    const QSignalBlocker blocker(m_Editor);
    switch (data.parameterType) {
        case ParameterType_Integer:
            if (auto spin = qobject_cast<QSpinBox*>(m_Editor))
                showInteger(spin, static_cast<const IntegerParameterData&>(data));
            break;
        case ParameterType_Float:
            if (auto spin = qobject_cast<QDoubleSpinBox*>(m_Editor))
                showFloat(spin, static_cast<const FloatParameterData&>(data));
            break;
        case ParameterType_Enumeration:
            if (auto combo = qobject_cast<QComboBox*>(m_Editor))
                showEnumeration(combo, static_cast<const EnumParameterData&>(data));
            break;
        case ParameterType_Boolean:
            if (auto check = qobject_cast<QCheckBox*>(m_Editor))
                check->setChecked(static_cast<const BooleanParameterData&>(data).value);
            break;
        default:
            if (auto line = qobject_cast<QLineEdit*>(m_Editor))
                line->setText(data.valueText);
            else if (auto label = qobject_cast<QLabel*>(m_Editor))
                label->setText(data.valueText);
    }
    m_Editor->setEnabled(data.isWriteable);
}
