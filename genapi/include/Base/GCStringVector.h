// A vector of gcstrings with GenICam's own iterator classes.
#ifndef GENICAM_GCSTRINGVECTOR_H
#define GENICAM_GCSTRINGVECTOR_H

#include <Base/GCString.h>
#include <vector>

namespace GENICAM_NAMESPACE {

class GCBASE_API gcstring_vector {
public:
    class iterator;

    class GCBASE_API const_iterator {
    public:
        const_iterator(gcstring* pPtr = 0) : _ps(pPtr) {}
        const gcstring& operator*(void) const { return *_ps; }
        const gcstring* operator->(void) const { return _ps; }
        const_iterator& operator++(void) {
            ++_ps;
            return *this;
        }
        const_iterator operator++(int) {
            const_iterator tmp(*this);
            ++_ps;
            return tmp;
        }
        const_iterator& operator--(void) {
            --_ps;
            return *this;
        }
        const_iterator operator--(int) {
            const_iterator tmp(*this);
            --_ps;
            return tmp;
        }
        const_iterator& operator+=(intptr_t iInc) {
            _ps += iInc;
            return *this;
        }
        const_iterator operator+(intptr_t iInc) const { return const_iterator(_ps + iInc); }
        const_iterator& operator-=(intptr_t iDec) {
            _ps -= iDec;
            return *this;
        }
        intptr_t operator-(const const_iterator& iter) const { return _ps - iter._ps; }
        const_iterator operator-(intptr_t iDec) const { return const_iterator(_ps - iDec); }
        const gcstring& operator[](intptr_t iIndex) const { return _ps[iIndex]; }
        bool operator==(const const_iterator& iter) const { return _ps == iter._ps; }
        bool operator!=(const const_iterator& iter) const { return _ps != iter._ps; }
        bool operator<(const const_iterator& iter) const { return _ps < iter._ps; }
        bool operator>(const const_iterator& iter) const { return _ps > iter._ps; }
        bool operator<=(const const_iterator& iter) const { return _ps <= iter._ps; }
        bool operator>=(const const_iterator& iter) const { return _ps >= iter._ps; }
        friend const_iterator operator+(intptr_t iInc, const const_iterator& iter) { return iter + iInc; }

    protected:
        gcstring* _ps;
    };

    class GCBASE_API iterator : public const_iterator {
    public:
        iterator(gcstring* pPtr = 0) : const_iterator(pPtr) {}
        gcstring& operator*(void) const { return *_ps; }
        gcstring* operator->(void) const { return _ps; }
        iterator& operator++(void) {
            ++_ps;
            return *this;
        }
        iterator operator++(int) {
            iterator tmp(*this);
            ++_ps;
            return tmp;
        }
        iterator& operator--(void) {
            --_ps;
            return *this;
        }
        iterator operator--(int) {
            iterator tmp(*this);
            --_ps;
            return tmp;
        }
        iterator& operator+=(intptr_t iInc) {
            _ps += iInc;
            return *this;
        }
        iterator operator+(intptr_t iInc) const { return iterator(_ps + iInc); }
        iterator& operator-=(intptr_t iDec) {
            _ps -= iDec;
            return *this;
        }
        intptr_t operator-(const iterator& iter) const { return _ps - iter._ps; }
        iterator operator-(intptr_t iDec) const { return iterator(_ps - iDec); }
        gcstring& operator[](intptr_t iIndex) const { return _ps[iIndex]; }
        friend iterator operator+(intptr_t iInc, const iterator& iter) { return iter + iInc; }
    };

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
