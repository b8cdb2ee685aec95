// CFloatParameter: no grid alignment anywhere; clipping keeps NaN; percent of range halves its operands
// so that differences stay finite near the limits of double.
#include "FloatParameter.h"
#include "../ScopedObjectStateLock.h"
#include "GenICamExceptionTranslation.h"
#include <utility>
#include <cfloat>
#include <cmath>

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {
namespace {

const double epsilon = DBL_EPSILON;  // 2^-52, absolute

double clipped(double value, double minimum, double maximum) {
    if (minimum > value)
        return minimum;
    if (value > maximum)
        return maximum;
    return value;
}

}  // namespace

CFloatParameter::CFloatParameter(QString const& name, QString const& nodeMapName,
                                 QSharedPointer<CObjectState> state,
                                 QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                                 QObject* parent)
    : CParameter(name, nodeMapName, state, decoupler, parent), m_Float(nullptr) {
    setCachedDataType<FloatParameterData>(this);
}

EParameterType CFloatParameter::getParameterType() {
    return ParameterType_Float;
}

QString CFloatParameter::toString() {
    return CParameter::toString();
}

void CFloatParameter::parseAndSetValue(QString const& value) {
    CParameter::parseAndSetValue(value);
}

bool CFloatParameter::attach(INodeMap* nodeMap) {
    const bool attached = CParameter::attach(nodeMap);
    m_Float = nodeAs<IFloat>(false);
    return attached;
}

double CFloatParameter::getValue() {
    return valueRead(m_Float, [](IFloat* node) { return node->GetValue(false, false); });
}

double CFloatParameter::getMinimum() {
    return standardRead(m_Float, [](IFloat* node) { return node->GetMin(); });
}

double CFloatParameter::getMaximum() {
    return standardRead(m_Float, [](IFloat* node) { return node->GetMax(); });
}

double CFloatParameter::getIncrement() {
    return standardRead(m_Float, [](IFloat* node) { return node->GetInc(); });
}

bool CFloatParameter::hasIncrement() {
    return standardRead(m_Float, [](IFloat* node) { return node->HasInc(); });
}

void CFloatParameter::setValue(double value) {
    standardWrite([&] { return announcementText(value); },
                  [&] {
                      if (m_Float)
                          m_Float.load()->SetValue(value, true);
                  });
}

double CFloatParameter::getValueOrDefault(double defaultValue) {
    CScopedObjectStateLock lock(objectState());
    return m_Float && inReadableMode() ? m_Float.load()->GetValue(false, false) : defaultValue;
}

bool CFloatParameter::trySetValue(double value) {
    CScopedObjectStateLock lock(objectState());
    if (isEmpty() || !inWritableMode())
        return false;
    announceAndWrite(requireNode(m_Float), value);
    return true;
}

// Clipping announces and writes the clipped value; corrections 1 and 2 write nothing.
void CFloatParameter::setValue(double value, EFloatValueCorrection correction) {
    if (correction == FloatValueCorrection_None) {
        setValue(value);
        return;
    }
    CScopedObjectStateLock lock(objectState());
    IFloat* node = requireNode(m_Float);
    const double minimum = node->GetMin();
    const double maximum = node->GetMax();
    if (correction == FloatValueCorrection_ClipToRange)
        announceAndWrite(node, clipped(value, minimum, maximum));
}

// The clipped write is the guarded one, so a node that cannot be written raises instead of answering false.
bool CFloatParameter::trySetValue(double value, EFloatValueCorrection correction) {
    if (correction == FloatValueCorrection_None)
        return trySetValue(value);
    CScopedObjectStateLock lock(objectState());
    if (isEmpty())
        return false;
    IFloat* node = requireNode(m_Float);
    const double minimum = node->GetMin();
    const double maximum = node->GetMax();
    if (correction == FloatValueCorrection_ClipToRange)
        setValue(clipped(value, minimum, maximum));
    return true;
}

double CFloatParameter::getValuePercentOfRange() {
    CScopedObjectStateLock lock(objectState());
    IFloat* node = requireNode(m_Float);
    const double minimum = node->GetMin();
    const double maximum = node->GetMax();
    const double value = node->GetValue(false, false);
    if (std::fabs(maximum - minimum) < epsilon || std::fabs(value - maximum) < epsilon)
        return 100.0;
    if (std::fabs(value - minimum) < epsilon)
        return 0.0;
    const long double percent =
        (static_cast<long double>(value) * 0.5L - static_cast<long double>(minimum) * 0.5L) /
        (static_cast<long double>(maximum) * 0.5L - static_cast<long double>(minimum) * 0.5L) * 100.0L;
    return static_cast<double>(std::min(percent, 100.0L));
}

void CFloatParameter::writePercentOfRange(double percent) {
    IFloat* node = requireNode(m_Float);
    if (writeLimitOfPercent(node, percent))
        return;
    const double minimum = node->GetMin();
    const double maximum = node->GetMax();
    const long double fraction = static_cast<long double>(percent) / 100.0L;
    const long double position = static_cast<long double>(minimum) -
                                 fraction * static_cast<long double>(minimum) +
                                 fraction * static_cast<long double>(maximum);
    node->SetValue(clipped(static_cast<double>(position), minimum, maximum), true);
}

void CFloatParameter::setValuePercentOfRange(double percent) {
    underStateLock([&] { writePercentOfRange(percent); });
}

bool CFloatParameter::trySetValuePercentOfRange(double percent) {
    return tryWhenReadWrite([&] { writePercentOfRange(percent); });
}

void CFloatParameter::writeLimit(double (IFloat::*limit)()) {
    IFloat* node = requireNode(m_Float);
    announceAndWrite(node, (node->*limit)());
}

void CFloatParameter::setToMaximum() {
    underStateLock([&] { writeLimit(&IFloat::GetMax); });
}

void CFloatParameter::setToMinimum() {
    underStateLock([&] { writeLimit(&IFloat::GetMin); });
}

bool CFloatParameter::trySetToMaximum() {
    return tryWhenReadWrite([&] { writeLimit(&IFloat::GetMax); });
}

bool CFloatParameter::trySetToMinimum() {
    return tryWhenReadWrite([&] { writeLimit(&IFloat::GetMin); });
}

bool CFloatParameter::updateCachedParameterData() {
    return refreshWithTypedFields([this](bool wasValid, CNodeMapLock&) {
        FloatParameterData& data = static_cast<FloatParameterData&>(*cachedData());
        const double value = getValue();
        const double minimum = getMinimum();
        const double maximum = getMaximum();
        const bool increments = hasIncrement();
        const double increment = increments ? getIncrement() : data.increment;
        const qint64 precision =
            translateGenICamExceptions([&] { return m_Float.load()->GetDisplayPrecision(); });
        QString representation = fixedProperty("Representation", "undefined");
        if (wasValid && data.value == value && data.minimum == minimum && data.maximum == maximum &&
            data.hasIncrement == increments && data.increment == increment &&
            data.displayPrecision == precision && data.representation == representation) {
            return false;
        }
        data.value = value;
        data.minimum = minimum;
        data.maximum = maximum;
        data.hasIncrement = increments;
        data.increment = increment;
        data.displayPrecision = precision;
        data.representation = std::move(representation);
        return true;
    });
}

QSharedPointer<ParameterData> CFloatParameter::getCachedParameterData() {
    return copyCachedDataAs<FloatParameterData>();
}

}  // namespace Internal
}  // namespace ParameterCollection
