// The parameter of a GenApi integer node.
#ifndef PARAMETERCOLLECTION_INTERNAL_INTEGERPARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_INTEGERPARAMETER_H

#include "../IIntegerParameter.h"
#include "Parameter.h"
#include <atomic>
#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

class PARAMETERCOLLECTION_EXPORT CIntegerParameter : public IIntegerParameter, public CParameter {
public:
    CIntegerParameter(QString const& name, QString const& nodeMapName, QSharedPointer<CObjectState> state,
                      QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                      QObject* parent = nullptr);

    void setValue(long long value, bool verify) override;
    long long getValue() override;
    long long getMinimum() override;
    long long getMaximum() override;
    long long getIncrement() override;
    bool trySetValue(long long value) override;
    long long getValueOrDefault(long long defaultValue) override;
    bool trySetValue(long long value, EIntegerValueCorrection correction) override;
    void setValue(long long value, EIntegerValueCorrection correction) override;
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
    void writeCorrected(long long value, EIntegerValueCorrection correction);
    void writePercentOfRange(double percent);
    void writeLimit(int64_t (GENAPI_NAMESPACE::IInteger::*limit)());

    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::IInteger*> m_Integer;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
