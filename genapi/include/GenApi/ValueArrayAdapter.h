// A register node's contents as an array of integers of one size and byte order (a lookup table, a
// list of coefficients). Reads and writes go through the register under its map's lock, so an element's
// read-modify-write is not interleaved with another thread's.
#ifndef GENAPI_VALUEARRAYADAPTER_H
#define GENAPI_VALUEARRAYADAPTER_H

#include <Base/GCException.h>
#include <GenApi/GenApi.h>
#include <GenApi/Synch.h>
#include <byteswap.h>
#include <string.h>
#include <vector>

namespace GENAPI_NAMESPACE {

template <class T>
class CValueArrayAdapterT {
public:
    CValueArrayAdapterT(IRegister* pRegister, EEndianess Endianess = LittleEndian)
        : m_pRegister(pRegister), m_Endianess(Endianess) {
        if (!m_pRegister)
            throw INVALID_ARGUMENT_EXCEPTION("No register for the value array");
    }

    // Whole elements in the register; a partial element at the end is not part of the array.
    size_t GetSize(bool Verify = false) {
        return static_cast<size_t>(m_pRegister->GetLength(Verify)) / sizeof(T);
    }

    void GetValues(std::vector<T>& Values, bool Verify = false, bool IgnoreCache = false) {
        std::vector<uint8_t> Bytes(static_cast<size_t>(m_pRegister->GetLength(Verify)));
        if (!Bytes.empty())
            m_pRegister->Get(&Bytes[0], static_cast<int64_t>(Bytes.size()), Verify, IgnoreCache);
        Values.resize(Bytes.size() / sizeof(T));
        for (size_t i = 0; i < Values.size(); ++i)
            Values[i] = FromDevice(&Bytes[i * sizeof(T)]);
    }

    void SetValues(const std::vector<T>& Values, bool Verify = true) {
        std::vector<uint8_t> Bytes(static_cast<size_t>(m_pRegister->GetLength(Verify)));
        if (Values.size() != Bytes.size() / sizeof(T))
            throw OUT_OF_RANGE_EXCEPTION("The register holds %d values, %d given",
                                         static_cast<int>(Bytes.size() / sizeof(T)),
                                         static_cast<int>(Values.size()));
        for (size_t i = 0; i < Values.size(); ++i)
            ToDevice(Values[i], &Bytes[i * sizeof(T)]);
        if (!Bytes.empty())
            m_pRegister->Set(&Bytes[0], static_cast<int64_t>(Bytes.size()), Verify);
    }

    T GetValue(size_t Index, bool Verify = false, bool IgnoreCache = false) {
        AutoLock Guard(Lock());
        std::vector<T> Values;
        GetValues(Values, Verify, IgnoreCache);
        CheckIndex(Index, Values.size());
        return Values[Index];
    }

    void SetValue(size_t Index, T Value, bool Verify = true) {
        AutoLock Guard(Lock());
        std::vector<T> Values;
        GetValues(Values, Verify);
        CheckIndex(Index, Values.size());
        Values[Index] = Value;
        SetValues(Values, Verify);
    }

private:
    CLock& Lock() { return m_pRegister->GetNode()->GetNodeMap()->GetLock(); }

    static void CheckIndex(size_t Index, size_t Size) {
        if (Index >= Size)
            throw OUT_OF_RANGE_EXCEPTION("Index %d is outside the array of %d values",
                                         static_cast<int>(Index), static_cast<int>(Size));
    }

    bool Swapped() const {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
        return m_Endianess == LittleEndian;
#else
        return m_Endianess == BigEndian;
#endif
    }

    static T Swap(T Value) {
        uint8_t Bytes[sizeof(T)];
        memcpy(Bytes, &Value, sizeof(T));
        for (size_t i = 0; i < sizeof(T) / 2; ++i) {
            const uint8_t Byte = Bytes[i];
            Bytes[i] = Bytes[sizeof(T) - 1 - i];
            Bytes[sizeof(T) - 1 - i] = Byte;
        }
        memcpy(&Value, Bytes, sizeof(T));
        return Value;
    }

    T FromDevice(const uint8_t* pBytes) const {
        T Value;
        memcpy(&Value, pBytes, sizeof(T));
        return Swapped() ? Swap(Value) : Value;
    }

    void ToDevice(T Value, uint8_t* pBytes) const {
        const T Device = Swapped() ? Swap(Value) : Value;
        memcpy(pBytes, &Device, sizeof(T));
    }

    IRegister* m_pRegister;
    EEndianess m_Endianess;
};

}  // namespace GENAPI_NAMESPACE

#endif
