// GenICam's own string class: a std::string lookalike that crosses library boundaries safely.
#ifndef GENICAM_GCSTRING_H
#define GENICAM_GCSTRING_H

#include <Base/GCNamespace.h>
#include <Base/GCTypes.h>
#include <iosfwd>
#include <new>
#include <string>

#define GCSTRING_NPOS size_t(-1)

namespace GENICAM_NAMESPACE {

class GCBASE_API gcstring {
public:
    gcstring();
    gcstring(const char* pc);
    gcstring(const char* pc, size_t n);
    gcstring(size_t count, char ch);
    gcstring(const gcstring& str);
    virtual ~gcstring();

    virtual gcstring& append(const gcstring& str);
    virtual gcstring& append(size_t count, char ch);
    virtual gcstring& assign(const gcstring& str);
    virtual gcstring& assign(size_t count, char ch);
    virtual gcstring& assign(const char* pc);
    virtual gcstring& assign(const char* pc, size_t n);
    virtual int compare(const gcstring& str) const;
    virtual const char* c_str(void) const;
    virtual bool empty(void) const;
    virtual size_t find(char ch, size_t offset = 0) const;
    virtual size_t find(const gcstring& str, size_t offset = 0) const;
    virtual size_t find(const gcstring& str, size_t offset, size_t count) const;
    virtual size_t find(const char* pc, size_t offset = 0) const;
    virtual size_t find(const char* pc, size_t offset, size_t count) const;
    virtual size_t length(void) const;
    virtual size_t size(void) const;
    virtual void resize(size_t n);
    virtual size_t max_size() const;
    virtual gcstring substr(size_t offset = 0, size_t count = GCSTRING_NPOS) const;
    virtual size_t find_first_of(const gcstring& str, size_t offset = 0) const;
    virtual size_t find_first_not_of(const gcstring& str, size_t offset = 0) const;
    virtual size_t find_last_of(const gcstring& str, size_t offset = GCSTRING_NPOS) const;
    virtual size_t find_last_of(char ch, size_t offset = GCSTRING_NPOS) const;
    virtual size_t find_last_not_of(const gcstring& str, size_t offset = GCSTRING_NPOS) const;
    virtual size_t find_last_not_of(char ch, size_t offset = GCSTRING_NPOS) const;
    virtual void reserve(size_t n = 0);
    virtual gcstring& erase(size_t pos, size_t len = GCSTRING_NPOS);
    virtual void swap(gcstring& Right);

    static const size_t npos;
    static size_t _npos();

    virtual gcstring& operator=(const gcstring& str);
    virtual gcstring& operator+=(const gcstring& str);
    virtual gcstring operator+=(const gcstring& str) const;
    virtual gcstring& operator+=(const char* pc);
    virtual gcstring& operator+=(char ch);
    virtual gcstring operator+=(char ch) const;
    virtual bool operator==(const gcstring& str) const;
    virtual bool operator==(const char* pc) const;
    virtual bool operator!=(const gcstring& str) const;
    virtual bool operator!=(const char* pc) const;
    virtual bool operator<(const gcstring& str) const;
    virtual bool operator>(const gcstring& str) const;
    operator const char*(void) const;

    void* operator new(size_t uiSize);
    void operator delete(void* pLoc);
    void* operator new(size_t, void* pLoc) noexcept { return pLoc; }
    void operator delete(void*, void*) noexcept {}

    friend GCBASE_API gcstring operator+(const gcstring& left, const gcstring& right);
    friend GCBASE_API gcstring operator+(const gcstring& left, const char* right);
    friend GCBASE_API gcstring operator+(const char* left, const gcstring& right);

private:
    std::string m_Text;
};

GCBASE_API gcstring operator+(const gcstring& left, const gcstring& right);
GCBASE_API gcstring operator+(const gcstring& left, const char* right);
GCBASE_API gcstring operator+(const char* left, const gcstring& right);

// Reads one line from a stream into a gcstring.
GCBASE_API std::istream& getline(std::istream& is, gcstring& str);
GCBASE_API std::istream& getline(std::istream& is, gcstring& str, char delim);

// Throws BadAllocException naming the place of the failed allocation.
GCBASE_API void ThrowBadAlloc(const char* source, int line);

}  // namespace GENICAM_NAMESPACE

GCBASE_API std::ostream& operator<<(std::ostream& ostr, const GenICam::gcstring& str);
GCBASE_API std::istream& operator>>(std::istream& istr, GenICam::gcstring& str);

#endif
