// Editors per type, their writes, and the row following the device's snapshots.
#include "FeatureRow.h"
#include "ParameterPrinter.h"
#include "ValueCommit.h"
#include <GenApi/GenApi.h>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QTreeWidget>
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

// Reset, reboot and factory-default commands change the whole device; the user confirms them first.
bool changesTheWholeDevice(const QString& name) {
    static const QRegularExpression pattern("Reset|Reboot|Restart|FactoryDefault",
                                            QRegularExpression::CaseInsensitiveOption);
    return pattern.match(name).hasMatch();
}

bool askUser(QWidget* parent, const QString& name) {
    return QMessageBox::question(parent, QObject::tr("Execute %1").arg(name),
                                 QObject::tr("%1 resets or restarts the device. Execute it?").arg(name)) ==
           QMessageBox::Yes;
}

void showEnumeration(QComboBox* combo, const EnumParameterData& data) {
    combo->clear();
    for (int i = 0; i < data.settableValues.size(); ++i)
        combo->addItem(data.settableValueDisplayNames.value(i, data.settableValues[i]),
                       data.settableValues[i]);
    if (combo->findData(data.valueText) < 0)
        combo->addItem(data.valueDisplayName.isEmpty() ? data.valueText : data.valueDisplayName,
                       data.valueText);
    combo->setCurrentIndex(data.isReadable ? combo->findData(data.valueText) : -1);
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

std::function<bool(QWidget*, const QString&)> CFeatureRow::confirmCommand = askUser;

// Numbers are edited as the text the tool prints, and committed only when the feature takes them.
template <typename Data, typename Value>
QWidget* CFeatureRow::numberEditor(bool (*check)(const QString&, const Data&, Value&, QString&),
                                   const std::function<void(Value)>& set) {
    auto line = new QLineEdit;
    connect(line, &QLineEdit::editingFinished, this, [this, line, check, set] {
        commit(line, [&](const ParameterData& data, QString& problem) {
            Value value{};
            if (!check(line->text(), static_cast<const Data&>(data), value, problem))
                return false;
            write([&] { set(value); });
            return true;
        });
    });
    return line;
}

QWidget* CFeatureRow::integerEditor() {
    auto integer = m_Parameter.dynamicCast<IIntegerParameter>();
    return numberEditor<IntegerParameterData, qint64>(
        &CValueCommit::integer, [integer](qint64 value) { integer->setValue(value, true); });
}

QWidget* CFeatureRow::floatEditor() {
    auto floating = m_Parameter.dynamicCast<IFloatParameter>();
    return numberEditor<FloatParameterData, double>(&CValueCommit::floating,
                                                    [floating](double value) { floating->setValue(value); });
}

// A text that differs from what the device shows is checked against the device's current limits; a
// refusal is named and the editor shows the device's value again.
void CFeatureRow::commit(QLineEdit* line,
                         const std::function<bool(const ParameterData&, QString&)>& checkAndWrite) {
    guarded([&] {
        QSharedPointer<const ParameterData> data = m_Parameter->getParameterData();
        if (!data->isWriteable || line->text() == (data->isReadable ? data->valueText : QString()))
            return;
        QString problem;
        if (!checkAndWrite(*data, problem)) {
            emit refused(m_Parameter->getName() + ": " + problem + "; nothing was written.");
            refresh();
        }
    });
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
    connect(button, &QPushButton::clicked, this, [this, button, command] {
        if (changesTheWholeDevice(command->getName()) && !confirmCommand(button, command->getName()))
            return;
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
    const bool done = guarded(change);
    refresh();
    if (done)
        emit written(m_Parameter->getName() + ": " + m_Item->data(ValueColumn, Qt::UserRole).toString());
}

// Nothing thrown leaves an event handler: a refused value is named as such, any other failure as one of
// the device, which may have stopped answering.
bool CFeatureRow::guarded(const std::function<void()>& action) {
    const QString name = m_Parameter->getName() + ": ";
    try {
        action();
        return true;
    } catch (const Core::Exception::ArgumentException& refusal) {
        emit refused(name + refusal.getMessage());
    } catch (const Core::Exception::ArgumentOutOfRangeException& refusal) {
        emit refused(name + refusal.getMessage());
    } catch (const Core::Exception::InvalidOperationException& refusal) {
        emit refused(name + refusal.getMessage());
    } catch (const Core::Exception::BaseException& failure) {
        emit deviceFailed(name + failure.getMessage());
    } catch (const GenICam::GenericException& failure) {
        emit deviceFailed(name + QString::fromUtf8(failure.GetDescription()));
    } catch (const std::exception& failure) {
        emit deviceFailed(name + QString::fromUtf8(failure.what()));
    } catch (...) {
        emit deviceFailed(name + tr("unknown failure"));
    }
    return false;
}

void CFeatureRow::watchCommandUntilDone() {
    auto command = m_Parameter.dynamicCast<ICommandParameter>();
    if (!m_Editor || !command)
        return;
    m_Editor->setEnabled(false);
    auto timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this, timer, command] {
        bool done = true;
        guarded([&] { done = command->isDone(); });
        if (done) {
            timer->deleteLater();
            refresh();
        }
    });
    timer->start(50);
}

void CFeatureRow::refresh() {
    if (!guarded([this] { showSnapshot(*m_Parameter->getParameterData()); })) {
        m_Item->setText(AccessColumn, QStringLiteral("NA"));
        m_Item->setData(ValueColumn, Qt::UserRole, QString());
        if (m_Editor)
            m_Editor->setEnabled(false);
    }
    emit refreshed(this);
}

void CFeatureRow::showSnapshot(const ParameterData& data) {
    m_Item->setText(UnitColumn, m_Unit);
    m_Item->setText(AccessColumn,
                    CParameterPrinter::accessText(data.isImplemented, data.isReadable, data.isWriteable));
    m_Item->setData(ValueColumn, Qt::UserRole, data.isReadable ? data.valueText : QString());
    if (!m_Editor)
        return;
    const QSignalBlocker blocker(m_Editor);
    // Values that cannot be read (not available, write only) show blank, never a stale or zero value.
    const QString shown = data.isReadable ? data.valueText : QString();
    switch (data.parameterType) {
        case ParameterType_Enumeration:
            if (auto combo = qobject_cast<QComboBox*>(m_Editor))
                showEnumeration(combo, static_cast<const EnumParameterData&>(data));
            break;
        case ParameterType_Boolean:
            if (auto check = qobject_cast<QCheckBox*>(m_Editor))
                check->setCheckState(!data.isReadable ? Qt::PartiallyChecked
                                     : static_cast<const BooleanParameterData&>(data).value ? Qt::Checked
                                                                                            : Qt::Unchecked);
            break;
        default:
            if (auto line = qobject_cast<QLineEdit*>(m_Editor)) {
                if (!line->hasFocus() || !line->isModified())
                    line->setText(shown);
                line->setModified(false);
            } else if (auto label = qobject_cast<QLabel*>(m_Editor)) {
                label->setText(shown);
            }
    }
    m_Editor->setEnabled(data.isWriteable);
}
