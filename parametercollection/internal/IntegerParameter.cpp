// CIntegerParameter: guarded and unguarded operations as the design lays them out, grid correction
// with ties going up, and percent of range in extended precision.
#include "IntegerParameter.h"
#include "../ScopedObjectStateLock.h"
#include "GenICamExceptionTranslation.h"
#include <utility>
#include <cmath>

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {
namespace {

// The target of a correction: limits clamp, in-range values move onto the grid (ties go up).
// `up` is not checked against the maximum again, so GenApi refuses a target above it.
long long correctedValue(long long value, long long minimum, long long maximum, long long increment,
                         EIntegerValueCorrection correction) {
    if (value < minimum)
        return minimum;
    if (value > maximum)
        return maximum;
    if (increment == 1)
        return value;
    const long long remainder = (value - minimum) % increment;
    if (remainder == 0)
        return value;
    const long long down = value - remainder;
    const long long up = down + increment;
    if (correction == IntegerValueCorrection_Up)
        return up;
    if (correction == IntegerValueCorrection_Nearest)
        return remainder >= up - value ? up : down;
    return down;
}

}  // namespace

CIntegerParameter::CIntegerParameter(QString const& name, QString const& nodeMapName,
                                     QSharedPointer<CObjectState> state,
                                     QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                                     QObject* parent)
    : CParameter(name, nodeMapName, state, decoupler, parent), m_Integer(nullptr) {
    setCachedDataType<IntegerParameterData>(this);
}

EParameterType CIntegerParameter::getParameterType() {
    return ParameterType_Integer;
}

QString CIntegerParameter::toString() {
    return CParameter::toString();
}

void CIntegerParameter::parseAndSetValue(QString const& value) {
    CParameter::parseAndSetValue(value);
}

bool CIntegerParameter::attach(INodeMap* nodeMap) {
    const bool attached = CParameter::attach(nodeMap);
    m_Integer = nodeAs<IInteger>(false);
    return attached;
}

long long CIntegerParameter::getValue() {
    return valueRead(m_Integer,
                     [](IInteger* node) { return static_cast<long long>(node->GetValue(false, false)); });
}

long long CIntegerParameter::getMinimum() {
    return standardRead(m_Integer, [](IInteger* node) { return static_cast<long long>(node->GetMin()); });
}

long long CIntegerParameter::getMaximum() {
    return standardRead(m_Integer, [](IInteger* node) { return static_cast<long long>(node->GetMax()); });
}

long long CIntegerParameter::getIncrement() {
    return standardRead(m_Integer, [](IInteger* node) { return static_cast<long long>(node->GetInc()); });
}

void CIntegerParameter::setValue(long long value, bool verify) {
    standardWrite([&] { return announcementText(value); },
                  [&] {
                      if (m_Integer)
                          m_Integer.load()->SetValue(value, verify);
                  });
}

long long CIntegerParameter::getValueOrDefault(long long defaultValue) {
    CScopedObjectStateLock lock(objectState());
    return m_Integer && inReadableMode() ? static_cast<long long>(m_Integer.load()->GetValue(false, false))
                                         : defaultValue;
}

bool CIntegerParameter::trySetValue(long long value) {
    CScopedObjectStateLock lock(objectState());
    if (isEmpty() || !inWritableMode())
        return false;
    announceAndWrite(requireNode(m_Integer), static_cast<int64_t>(value));
    return true;
}

void CIntegerParameter::writeCorrected(long long value, EIntegerValueCorrection correction) {
    IInteger* node = requireNode(m_Integer);
    // The limits are read one by one, minimum, maximum, increment, since reading a limit may have
    // effects on the device.
    const long long minimum = node->GetMin();
    const long long maximum = node->GetMax();
    const long long increment = node->GetInc();
    const long long target = correctedValue(value, minimum, maximum, increment, correction);
    announceAndWrite(node, static_cast<int64_t>(target));
}

void CIntegerParameter::setValue(long long value, EIntegerValueCorrection correction) {
    if (correction == IntegerValueCorrection_None) {
        announceValue(announcementText(value));
        if (m_Integer)
            m_Integer.load()->SetValue(value, true);
        return;
    }
    CScopedObjectStateLock lock(objectState());
    writeCorrected(value, correction);
}

bool CIntegerParameter::trySetValue(long long value, EIntegerValueCorrection correction) {
    if (correction == IntegerValueCorrection_None)
        return trySetValue(value);
    CScopedObjectStateLock lock(objectState());
    if (!inReadWriteMode())
        return false;
    writeCorrected(value, correction);
    return true;
}

// At the maximum 100, at the minimum 0; no lower cap, so a value below the minimum is negative.
double CIntegerParameter::getValuePercentOfRange() {
    CScopedObjectStateLock lock(objectState());
    IInteger* node = requireNode(m_Integer);
    const long long minimum = node->GetMin();
    const long long maximum = node->GetMax();
    const long long value = node->GetValue(false, false);
    if (minimum == maximum || value == maximum)
        return 100.0;
    if (value == minimum)
        return 0.0;
    const long double percent = (static_cast<long double>(value) - static_cast<long double>(minimum)) /
                                (static_cast<long double>(maximum) - static_cast<long double>(minimum)) *
                                100.0L;
    return static_cast<double>(std::min(percent, 100.0L));
}

// Percent writes are not announced; the position is rounded half away from zero, then put on the grid.
void CIntegerParameter::writePercentOfRange(double percent) {
    IInteger* node = requireNode(m_Integer);
    if (writeLimitOfPercent(node, percent))
        return;
    const long long minimum = node->GetMin();
    const long long maximum = node->GetMax();
    const long double fraction = static_cast<long double>(percent) / 100.0L;
    const long double position = static_cast<long double>(minimum) -
                                 fraction * static_cast<long double>(minimum) +
                                 fraction * static_cast<long double>(maximum);
    const long long rounded = std::llround(position);
    node->SetValue(correctedValue(rounded, minimum, maximum, node->GetInc(), IntegerValueCorrection_Nearest),
                   true);
}

void CIntegerParameter::setValuePercentOfRange(double percent) {
    underStateLock([&] { writePercentOfRange(percent); });
}

bool CIntegerParameter::trySetValuePercentOfRange(double percent) {
    return tryWhenReadWrite([&] { writePercentOfRange(percent); });
}

void CIntegerParameter::writeLimit(int64_t (IInteger::*limit)()) {
    IInteger* node = requireNode(m_Integer);
    announceAndWrite(node, static_cast<int64_t>((node->*limit)()));
}

void CIntegerParameter::setToMaximum() {
    underStateLock([&] { writeLimit(&IInteger::GetMax); });
}

void CIntegerParameter::setToMinimum() {
    underStateLock([&] { writeLimit(&IInteger::GetMin); });
}

bool CIntegerParameter::trySetToMaximum() {
    return tryWhenReadWrite([&] { writeLimit(&IInteger::GetMax); });
}

bool CIntegerParameter::trySetToMinimum() {
    return tryWhenReadWrite([&] { writeLimit(&IInteger::GetMin); });
}

bool CIntegerParameter::updateCachedParameterData() {
    return refreshWithTypedFields([this](bool wasValid, CNodeMapLock&) {
        IntegerParameterData& data = static_cast<IntegerParameterData&>(*cachedData());
        const long long value = getValue();
        const long long minimum = getMinimum();
        const long long maximum = getMaximum();
        const long long increment = getIncrement();
        QString representation = fixedProperty("Representation", "undefined");
        if (wasValid && data.value == value && data.minimum == minimum && data.maximum == maximum &&
            data.increment == increment && data.representation == representation) {
            return false;
        }
        data.value = value;
        data.minimum = minimum;
        data.maximum = maximum;
        data.increment = increment;
        data.representation = std::move(representation);
        return true;
    });
}

QSharedPointer<ParameterData> CIntegerParameter::getCachedParameterData() {
    return copyCachedDataAs<IntegerParameterData>();
}

}  // namespace Internal
}  // namespace ParameterCollection
