// Reference-counted vectors of valid integer and float values; copies share their storage.
#ifndef GENAPI_AUTOVECTOR_H
#define GENAPI_AUTOVECTOR_H

#include <GenApi/GenApiDll.h>
#include <Base/GCTypes.h>
#include <memory>
#include <vector>

namespace GENAPI_NAMESPACE {

template <typename T>
class GENAPI_DECL shared_value_vector {
public:
    explicit shared_value_vector() : m_pData(std::make_shared<std::vector<T> >()) {}
    shared_value_vector(const shared_value_vector& other) : m_pData(other.m_pData) {}
    explicit shared_value_vector(size_t n) : m_pData(std::make_shared<std::vector<T> >(n)) {}
    virtual ~shared_value_vector() {}
    shared_value_vector& operator=(const shared_value_vector& other) {
        m_pData = other.m_pData;
        return *this;
    }
    T& operator[](size_t uiIndex) { return (*m_pData)[uiIndex]; }
    const T& operator[](size_t uiIndex) const { return (*m_pData)[uiIndex]; }
    size_t size(void) const { return m_pData->size(); }

private:
    std::shared_ptr<std::vector<T> > m_pData;
};

class GENAPI_DECL int64_autovector_t : public shared_value_vector<int64_t> {
public:
    explicit int64_autovector_t() {}
    int64_autovector_t(const int64_autovector_t& obj) : shared_value_vector<int64_t>(obj) {}
    explicit int64_autovector_t(size_t nSize) : shared_value_vector<int64_t>(nSize) {}
    virtual ~int64_autovector_t() {}
    int64_autovector_t& operator=(const int64_autovector_t& obj) {
        shared_value_vector<int64_t>::operator=(obj);
        return *this;
    }
};

class GENAPI_DECL double_autovector_t : public shared_value_vector<double> {
public:
    explicit double_autovector_t() {}
    double_autovector_t(const double_autovector_t& obj) : shared_value_vector<double>(obj) {}
    explicit double_autovector_t(size_t nSize) : shared_value_vector<double>(nSize) {}
    virtual ~double_autovector_t() {}
    double_autovector_t& operator=(const double_autovector_t& obj) {
        shared_value_vector<double>::operator=(obj);
        return *this;
    }
};

}  // namespace GENAPI_NAMESPACE

#endif
