// The parameter of a GenApi float node.
#ifndef PARAMETERCOLLECTION_INTERNAL_FLOATPARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_FLOATPARAMETER_H

#include "../IFloatParameter.h"
#include "Parameter.h"
#include <atomic>
#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CFloatParameter : public IFloatParameter, public CParameter {
public:
    CFloatParameter(QString const& name, QString const& nodeMapName, QSharedPointer<CObjectState> state,
                    QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                    QObject* parent = nullptr);

    void setValue(double value) override;
    double getValue() override;
    double getMinimum() override;
    double getMaximum() override;
    double getIncrement() override;
    bool hasIncrement() override;
    bool trySetValue(double value) override;
    double getValueOrDefault(double defaultValue) override;
    bool trySetValue(double value, EFloatValueCorrection correction) override;
    void setValue(double value, EFloatValueCorrection correction) override;
    double getValuePercentOfRange() override;
    void setValuePercentOfRange(double percent) override;
    bool trySetValuePercentOfRange(double percent) override;
    void setToMaximum() override;
    void setToMinimum() override;
    bool trySetToMaximum() override;
    bool trySetToMinimum() override;

    EParameterType getParameterType() override;
    QString toString() override;
    void parseAndSetValue(QString const& value) override;
    bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap) override;
    bool updateCachedParameterData() override;
    QSharedPointer<ParameterData> getCachedParameterData() override;

private:
    void writePercentOfRange(double percent);
    void writeLimit(double (GENAPI_NAMESPACE::IFloat::*limit)());

    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::IFloat*> m_Float;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
