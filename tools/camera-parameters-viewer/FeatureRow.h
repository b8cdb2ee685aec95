// One feature in the viewer's tree: its row (name, value editor, unit, access), kept in step with the device
// through the parameter's decoupled change signal, and the editor's changes written back to the device.
#ifndef TOOLS_CAMERAPARAMETERSVIEWER_FEATUREROW_H
#define TOOLS_CAMERAPARAMETERSVIEWER_FEATUREROW_H

#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <exception>
#include <functional>
#include <parametercollection/IParameter.h>
#include <parametercollection/ParameterData.h>

class QLineEdit;
class QTreeWidgetItem;
class QWidget;

class CFeatureRow : public QObject {
    Q_OBJECT

public:
    enum EColumn { NameColumn = 0, ValueColumn = 1, UnitColumn = 2, AccessColumn = 3 };

    CFeatureRow(QSharedPointer<ParameterCollection::IParameter> parameter, QTreeWidgetItem* item);
    ~CFeatureRow() override;

    ParameterCollection::IParameter& parameter() const { return *m_Parameter; }
    QTreeWidgetItem* item() const { return m_Item; }
    QWidget* editor() const { return m_Editor; }
    // Creates the editor for the parameter's type and places it in the value column.
    void createEditor();
    // Shows the device's current value and access: the editor follows, greyed out while not writable.
    void refresh();

signals:
    // A value the device refused, with its message; the editor already shows the device's value again.
    void refused(const QString& message);
    // The row shows a new snapshot of the device.
    void refreshed(CFeatureRow* row);
    // A write the device took, with the value it shows now; the refusal of an earlier one is over.
    void written(const QString& message);
    // A call failed for another reason than a refused value: the device may have stopped answering.
    void deviceFailed(const QString& message);

public:
    // Asks the user before a command that resets or restarts the device; a test answers for the user.
    static std::function<bool(QWidget* parent, const QString& command)> confirmCommand;

private:
    // The editor for the parameter's type, connected to write what the user enters.
    QWidget* editorForType();
    template <typename Data, typename Value>
    QWidget* numberEditor(bool (*check)(const QString&, const Data&, Value&, QString&),
                          const std::function<void(Value)>& set);
    QWidget* integerEditor();
    QWidget* floatEditor();
    QWidget* enumerationEditor();
    QWidget* booleanEditor();
    QWidget* commandEditor();
    QWidget* stringEditor();
    void write(const std::function<void()>& change);
    void commit(
        QLineEdit* line,
        const std::function<bool(const ParameterCollection::ParameterData&, QString&)>& checkAndWrite);
    bool guarded(const std::function<void()>& action);
    void showSnapshot(const ParameterCollection::ParameterData& data);
    void watchCommandUntilDone();

    QSharedPointer<ParameterCollection::IParameter> m_Parameter;
    QTreeWidgetItem* m_Item;
    QPointer<QWidget> m_Editor;
    QString m_Unit;
};

#endif
