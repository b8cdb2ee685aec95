// Float nodes: Float, FloatReg, SwissKnife and Converter.
#ifndef GENAPI_ENGINE_FLOATNODE_H
#define GENAPI_ENGINE_FLOATNODE_H

#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include "ValueNode.h"

namespace GenApiEngine {

class CFloatNode : public CValueNode, public virtual GenApi::IFloat {
public:
    CFloatNode(CNodeMapImpl& map, const SNodeDescription& description);

    // IValue
    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    // The value before the range check.
    double computeValue(bool Verify, bool IgnoreCache);
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;

    // IFloat
    void SetValue(double Value, bool Verify = true) override;
    GenApi::IFloat& operator=(double Value) override;
    double GetValue(bool Verify = false, bool IgnoreCache = false) override;
    double operator()() override { return GetValue(); }
    double operator*() override { return GetValue(); }
    double GetMin() override;
    double GetMax() override;
    bool HasInc() override;
    GenApi::EIncMode GetIncMode() override;
    double GetInc() override;
    GenApi::double_autovector_t GetListOfValidValues(bool bounded = true) override;
    GenApi::ERepresentation GetRepresentation() override;
    GenICam::gcstring GetUnit() const override;
    GenApi::EDisplayNotation GetDisplayNotation() const override;
    int64_t GetDisplayPrecision() const override;
    void ImposeMin(double Value) override;
    void ImposeMax(double Value) override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override;
    GenApi::EAccessMode accessAskedFirst() const override;

private:
    ArvGcFloat* floating(const char* method) const;
    void checkAvailable(const char* method) const;
    // The float node behind pValue, which supplies what this node does not describe itself.
    GenApi::IFloat* source() const;
    // The integer behind pValue, if it names one: it supplies increment, representation and unit.
    GenApi::IInteger* integerSource() const;

    GenApi::ERepresentation describedRepresentation();
    // The limit of a converter without limits of its own; false for other nodes.
    static double towardsLimits(double value, const std::string& text, bool above);
    bool sourceLimit(bool minimum, double& limit);
    bool converterLimit(bool minimum, const char* method, double& limit);

    GenApi::ERepresentation m_Representation = GenApi::_UndefinedRepresentation;
    SCachedValue<double> m_Value;
    SCachedValue<double> m_Min;
    SCachedValue<double> m_Max;
    double m_ImposedMin;
    double m_ImposedMax;
};

}  // namespace GenApiEngine

#endif
