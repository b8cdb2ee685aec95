// A vector of gcstrings with GenICam's own iterator classes.
#ifndef GENICAM_GCSTRINGVECTOR_H
#define GENICAM_GCSTRINGVECTOR_H

#include <Base/GCIterators.h>
#include <Base/GCString.h>
#include <vector>

namespace GENICAM_NAMESPACE {

class GCBASE_API gcstring_vector {
public:
    typedef detail::const_iterator_t<gcstring> const_iterator;
    typedef detail::iterator_t<gcstring> iterator;

    gcstring_vector(void);
    explicit gcstring_vector(size_t uiSize, const gcstring& str = gcstring());
    gcstring_vector(const gcstring_vector& obj);
    virtual ~gcstring_vector(void);

    virtual void assign(size_t n, const gcstring& val);
    virtual void clear(void);
    virtual iterator erase(iterator pos);
    virtual gcstring& at(size_t uiIndex);
    virtual const gcstring& at(size_t uiIndex) const;
    virtual void push_back(const gcstring& str);
    virtual void pop_back(void);
    virtual size_t size(void) const;
    virtual size_t capacity(void) const;
    virtual size_t max_size(void) const;
    virtual void reserve(size_t uiSize);
    virtual void resize(size_t uiSize, const gcstring& str = gcstring());
    virtual iterator insert(iterator pos, const gcstring& str);
    virtual bool contains(const gcstring& str) const;
    virtual const_iterator begin(void) const;
    virtual const_iterator end(void) const;
    virtual iterator begin(void);
    virtual iterator end(void);
    virtual bool empty(void) const;
    virtual gcstring& front(void);
    virtual const gcstring& front(void) const;
    virtual gcstring& back(void);
    virtual const gcstring& back(void) const;

    // Legacy members kept for older clients.
    virtual void assign(const gcstring_vector& obj);
    virtual void erase(size_t uiIndex);
    virtual void insert(size_t uiIndex, const gcstring& str);

    gcstring_vector& operator=(const gcstring_vector& obj);
    gcstring& operator[](size_t uiIndex);
    const gcstring& operator[](size_t uiIndex) const;

private:
    std::vector<gcstring> _pv;
};

}  // namespace GENICAM_NAMESPACE

#endif
