// Integer nodes: Integer, IntReg, MaskedIntReg, IntSwissKnife, IntConverter and struct entries.
#ifndef GENAPI_ENGINE_INTEGERNODE_H
#define GENAPI_ENGINE_INTEGERNODE_H

#include <GenApi/IInteger.h>
#include "ValueNode.h"

namespace GenApiEngine {

class CIntegerNode : public CValueNode, public virtual GenApi::IInteger {
public:
    CIntegerNode(CNodeMapImpl& map, const SNodeDescription& description);

    // IValue
    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;

    // IInteger
    void SetValue(int64_t Value, bool Verify = true) override;
    GenApi::IInteger& operator=(int64_t Value) override;
    int64_t GetValue(bool Verify = false, bool IgnoreCache = false) override;
    // The value of an integer converter, from FormulaFrom over its pValue and variables.
    int64_t convertedValue(bool Verify, bool IgnoreCache);
    int64_t operator()() override { return GetValue(); }
    int64_t operator*() override { return GetValue(); }
    int64_t GetMin() override;
    int64_t GetMax() override;
    GenApi::EIncMode GetIncMode() override;
    int64_t GetInc() override;
    GenApi::int64_autovector_t GetListOfValidValues(bool bounded = true) override;
    GenApi::ERepresentation GetRepresentation() override;
    GenICam::gcstring GetUnit() override;
    void ImposeMin(int64_t Value) override;
    void ImposeMax(int64_t Value) override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override;
    GenApi::EAccessMode accessAskedFirst() const override;

private:
    ArvGcInteger* integer(const char* method) const;
    void checkAvailable(const char* method) const;
    void checkRange(int64_t value, const char* method);
    void checkRange(int64_t value, const char* method, int64_t minimum, int64_t maximum, int64_t increment);
    // The limits without the availability check the public getters make; the map lock must be held.
    int64_t minimum();
    int64_t maximum();
    int64_t increment();
    CIntegerNode* valueTarget();
    // Where one limit (Min, Max or Inc) comes from.
    struct SLimitSource {
        bool known = false;
        CNodeBase* pointee = nullptr;
        bool constant = false;
        int64_t value = 0;
        bool copied = false;
        std::vector<GenApi::IInteger*> shared;
        bool widest = false;
        bool converter = false;
    };
    const SLimitSource& limitSource(SLimitSource& source, const std::string& name);
    static int64_t sharedLimit(const std::vector<GenApi::IInteger*>& targets, bool minimum, int64_t fallback);
    int64_t limit(SCachedValue<int64_t>& slot, SLimitSource& where, const char* name, const char* method,
                  int64_t fallback, gint64 (*arvLimit)(ArvGcInteger*, GError**));
    // Writes an integer register, or the one a plain pValue names, straight to the device when its place
    // adds up from addresses, address nodes and indices; false when Aravis must write it.
    bool writeRegisterDirectly(int64_t value);
    // How the written register's address adds up, as GenApi adds it: constant addresses and the port's
    // routing offset, plus address and index nodes times their multipliers. Worked out once.
    struct SRegisterPlace {
        bool known = false;
        bool usable = false;
        int64_t base = 0;
        int64_t length = 0;
        bool bigEndian = false;
        std::vector<std::pair<CNodeBase*, int64_t>> parts;
    };
    const SRegisterPlace& registerPlace() const;
    bool describePlace(const CNodeBase& reg, SRegisterPlace& place) const;
    const std::vector<int64_t>& validValues() const;

    GenApi::ERepresentation describedRepresentation();

    GenApi::ERepresentation m_Representation = GenApi::_UndefinedRepresentation;
    SCachedValue<int64_t> m_Value;
    SCachedValue<int64_t> m_Min;
    SCachedValue<int64_t> m_Max;
    SCachedValue<int64_t> m_Inc;
    SLimitSource m_MinSource;
    SLimitSource m_MaxSource;
    SLimitSource m_IncSource;
    mutable SRegisterPlace m_Place;
    CIntegerNode* m_ValueTarget = nullptr;
    bool m_ValueTargetKnown = false;
    // Where a read takes the value from, worked out once from the description.
    enum class ESource : uint8_t { Unknown, Own, Converter, Formula, AravisFormula, Pointee, Aravis };
    bool needsEngineEvaluation() const;
    ESource source();
    bool holdsOwnValue() { return source() == ESource::Own; }
    ESource m_Source = ESource::Unknown;
    int64_t m_OwnValue = 0;
    mutable std::vector<int64_t> m_ValidValues;
    mutable bool m_ValidValuesKnown = false;
    int64_t m_ImposedMin = INT64_MIN;
    int64_t m_ImposedMax = INT64_MAX;
};

}  // namespace GenApiEngine

#endif
