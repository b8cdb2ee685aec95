// Random-access iterators over contiguous elements, shared by GenICam's and GenApi's vector classes.
#ifndef GENICAM_GCITERATORS_H
#define GENICAM_GCITERATORS_H

#include <Base/GCNamespace.h>
#include <cstddef>
#include <iterator>
#include <stdint.h>

namespace GENICAM_NAMESPACE {
namespace detail {

template <typename T>
class const_iterator_t {
public:
    typedef std::random_access_iterator_tag iterator_category;
    typedef T value_type;
    typedef ptrdiff_t difference_type;
    typedef const T* pointer;
    typedef const T& reference;

    const_iterator_t(T* pPtr = 0) : _ps(pPtr) {}
    const T& operator*(void) const { return *_ps; }
    const T* operator->(void) const { return _ps; }
    const_iterator_t& operator++(void) {
        ++_ps;
        return *this;
    }
    const_iterator_t operator++(int) {
        const_iterator_t tmp(*this);
        ++_ps;
        return tmp;
    }
    const_iterator_t& operator--(void) {
        --_ps;
        return *this;
    }
    const_iterator_t operator--(int) {
        const_iterator_t tmp(*this);
        --_ps;
        return tmp;
    }
    const_iterator_t& operator+=(intptr_t iInc) {
        _ps += iInc;
        return *this;
    }
    const_iterator_t operator+(intptr_t iInc) const { return const_iterator_t(_ps + iInc); }
    const_iterator_t& operator-=(intptr_t iDec) {
        _ps -= iDec;
        return *this;
    }
    intptr_t operator-(const const_iterator_t& iter) const { return _ps - iter._ps; }
    const_iterator_t operator-(intptr_t iDec) const { return const_iterator_t(_ps - iDec); }
    const T& operator[](intptr_t iIndex) const { return _ps[iIndex]; }
    bool operator==(const const_iterator_t& iter) const { return _ps == iter._ps; }
    bool operator!=(const const_iterator_t& iter) const { return _ps != iter._ps; }
    bool operator<(const const_iterator_t& iter) const { return _ps < iter._ps; }
    bool operator>(const const_iterator_t& iter) const { return _ps > iter._ps; }
    bool operator<=(const const_iterator_t& iter) const { return _ps <= iter._ps; }
    bool operator>=(const const_iterator_t& iter) const { return _ps >= iter._ps; }
    friend const_iterator_t operator+(intptr_t iInc, const const_iterator_t& iter) { return iter + iInc; }

protected:
    T* _ps;
};

template <typename T>
class iterator_t : public const_iterator_t<T> {
public:
    typedef T* pointer;
    typedef T& reference;

    iterator_t(T* pPtr = 0) : const_iterator_t<T>(pPtr) {}
    T& operator*(void) const { return *this->_ps; }
    T* operator->(void) const { return this->_ps; }
    iterator_t& operator++(void) {
        ++this->_ps;
        return *this;
    }
    iterator_t operator++(int) {
        iterator_t tmp(*this);
        ++this->_ps;
        return tmp;
    }
    iterator_t& operator--(void) {
        --this->_ps;
        return *this;
    }
    iterator_t operator--(int) {
        iterator_t tmp(*this);
        --this->_ps;
        return tmp;
    }
    iterator_t& operator+=(intptr_t iInc) {
        this->_ps += iInc;
        return *this;
    }
    iterator_t operator+(intptr_t iInc) const { return iterator_t(this->_ps + iInc); }
    iterator_t& operator-=(intptr_t iDec) {
        this->_ps -= iDec;
        return *this;
    }
    intptr_t operator-(const iterator_t& iter) const { return this->_ps - iter._ps; }
    iterator_t operator-(intptr_t iDec) const { return iterator_t(this->_ps - iDec); }
    T& operator[](intptr_t iIndex) const { return this->_ps[iIndex]; }
    friend iterator_t operator+(intptr_t iInc, const iterator_t& iter) { return iter + iInc; }
};

}  // namespace detail
}  // namespace GENICAM_NAMESPACE

#endif
