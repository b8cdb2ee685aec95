// Vectors of node and value pointers with random-access iterators.
#ifndef GENAPI_CONTAINER_H
#define GENAPI_CONTAINER_H

#include <Base/GCIterators.h>
#include <GenApi/GenApiDll.h>
#include <Base/GCTypes.h>
#include <cstddef>
#include <iterator>
#include <vector>

namespace GENAPI_NAMESPACE {

struct INode;
struct IValue;

// Common body of node_vector and value_vector; T is the element pointer type.
template <typename T>
class pointer_vector {
public:
    typedef GENICAM_NAMESPACE::detail::const_iterator_t<T> const_iterator;
    typedef GENICAM_NAMESPACE::detail::iterator_t<T> iterator;

    pointer_vector() {}
    explicit pointer_vector(size_t uiSize) : _pv(uiSize) {}
    pointer_vector(const pointer_vector& obj) : _pv(obj._pv) {}
    virtual ~pointer_vector() {}
    pointer_vector& operator=(const pointer_vector& obj) {
        _pv = obj._pv;
        return *this;
    }

    virtual void assign(size_t n, const T& obj) { _pv.assign(n, obj); }
    virtual void clear(void) { _pv.clear(); }
    virtual iterator erase(iterator pos) {
        const size_t index = static_cast<size_t>(pos - begin());
        _pv.erase(_pv.begin() + static_cast<ptrdiff_t>(index));
        return begin() + static_cast<intptr_t>(index);
    }
    virtual T& at(size_t uiIndex) { return _pv.at(uiIndex); }
    virtual const T& at(size_t uiIndex) const { return _pv.at(uiIndex); }
    virtual void push_back(const T& obj) { _pv.push_back(obj); }
    virtual void pop_back(void) { _pv.pop_back(); }
    virtual size_t size(void) const { return _pv.size(); }
    virtual size_t capacity(void) const { return _pv.capacity(); }
    virtual size_t max_size(void) const { return _pv.max_size(); }
    virtual void reserve(size_t uiSize) { _pv.reserve(uiSize); }
    virtual iterator insert(iterator pos, const T& obj) {
        const size_t index = static_cast<size_t>(pos - begin());
        _pv.insert(_pv.begin() + static_cast<ptrdiff_t>(index), obj);
        return begin() + static_cast<intptr_t>(index);
    }
    virtual const_iterator begin(void) const { return const_iterator(const_cast<T*>(_pv.data())); }
    virtual const_iterator end(void) const { return const_iterator(const_cast<T*>(_pv.data()) + _pv.size()); }
    virtual iterator begin(void) { return iterator(_pv.data()); }
    virtual iterator end(void) { return iterator(_pv.data() + _pv.size()); }
    virtual bool empty(void) const { return _pv.empty(); }
    virtual T& front(void) { return _pv.front(); }
    virtual const T& front(void) const { return _pv.front(); }
    virtual T& back(void) { return _pv.back(); }
    virtual const T& back(void) const { return _pv.back(); }
    virtual void erase(size_t uiIndex) { _pv.erase(_pv.begin() + static_cast<ptrdiff_t>(uiIndex)); }
    virtual void insert(size_t uiIndex, const T& obj) {
        _pv.insert(_pv.begin() + static_cast<ptrdiff_t>(uiIndex), obj);
    }
    T& operator[](size_t uiIndex) { return _pv[uiIndex]; }
    const T& operator[](size_t uiIndex) const { return _pv[uiIndex]; }

protected:
    std::vector<T> _pv;
};

class GENAPI_DECL node_vector : public pointer_vector<INode*> {
public:
    node_vector() {}
    explicit node_vector(size_t uiSize) : pointer_vector<INode*>(uiSize) {}
    node_vector(const node_vector& obj) : pointer_vector<INode*>(obj) {}
    virtual ~node_vector() {}
    node_vector& operator=(const node_vector& obj) {
        pointer_vector<INode*>::operator=(obj);
        return *this;
    }
    virtual void resize(size_t uiSize) { _pv.resize(uiSize); }
};

class GENAPI_DECL value_vector : public pointer_vector<IValue*> {
public:
    value_vector() {}
    explicit value_vector(size_t uiSize) : pointer_vector<IValue*>(uiSize) {}
    value_vector(const value_vector& obj) : pointer_vector<IValue*>(obj) {}
    virtual ~value_vector() {}
    value_vector& operator=(const value_vector& obj) {
        pointer_vector<IValue*>::operator=(obj);
        return *this;
    }
    virtual void resize(size_t uiSize, IValue* const& defaultValue) { _pv.resize(uiSize, defaultValue); }
};

typedef value_vector FeatureList_t;

}  // namespace GENAPI_NAMESPACE

#endif
