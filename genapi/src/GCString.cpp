// gcstring: a thin wrapper around std::string with GenICam's member set.
#include <Base/GCString.h>
#include <Base/GCException.h>
#include <cstdlib>
#include <istream>
#include <ostream>

namespace GENICAM_NAMESPACE {

const size_t gcstring::npos = GCSTRING_NPOS;
size_t gcstring::_npos() {
    return GCSTRING_NPOS;
}

gcstring::gcstring() {}
gcstring::gcstring(const char* pc) : m_Text(pc ? pc : "") {}
gcstring::gcstring(const char* pc, size_t n) : m_Text(pc ? std::string(pc, n) : std::string()) {}
gcstring::gcstring(size_t count, char ch) : m_Text(count, ch) {}
gcstring::gcstring(const gcstring& str) : m_Text(str.m_Text) {}
gcstring::~gcstring() {}

gcstring& gcstring::append(const gcstring& str) {
    m_Text.append(str.m_Text);
    return *this;
}
gcstring& gcstring::append(size_t count, char ch) {
    m_Text.append(count, ch);
    return *this;
}
gcstring& gcstring::assign(const gcstring& str) {
    m_Text = str.m_Text;
    return *this;
}
gcstring& gcstring::assign(size_t count, char ch) {
    m_Text.assign(count, ch);
    return *this;
}
gcstring& gcstring::assign(const char* pc) {
    m_Text.assign(pc ? pc : "");
    return *this;
}
gcstring& gcstring::assign(const char* pc, size_t n) {
    m_Text.assign(pc ? std::string(pc, n) : std::string());
    return *this;
}
int gcstring::compare(const gcstring& str) const {
    return m_Text.compare(str.m_Text);
}
const char* gcstring::c_str(void) const {
    return m_Text.c_str();
}
bool gcstring::empty(void) const {
    return m_Text.empty();
}
size_t gcstring::find(char ch, size_t offset) const {
    return m_Text.find(ch, offset);
}
size_t gcstring::find(const gcstring& str, size_t offset) const {
    return m_Text.find(str.m_Text, offset);
}
size_t gcstring::find(const gcstring& str, size_t offset, size_t count) const {
    return m_Text.find(str.m_Text.c_str(), offset, count);
}
size_t gcstring::find(const char* pc, size_t offset) const {
    return m_Text.find(pc ? pc : "", offset);
}
size_t gcstring::find(const char* pc, size_t offset, size_t count) const {
    return m_Text.find(pc ? pc : "", offset, count);
}
size_t gcstring::length(void) const {
    return m_Text.length();
}
size_t gcstring::size(void) const {
    return m_Text.size();
}
void gcstring::resize(size_t n) {
    m_Text.resize(n);
}
size_t gcstring::max_size() const {
    return m_Text.max_size();
}
gcstring gcstring::substr(size_t offset, size_t count) const {
    const std::string part = m_Text.substr(offset, count);
    return gcstring(part.c_str(), part.size());
}
size_t gcstring::find_first_of(const gcstring& str, size_t offset) const {
    return m_Text.find_first_of(str.m_Text, offset);
}
size_t gcstring::find_first_not_of(const gcstring& str, size_t offset) const {
    return m_Text.find_first_not_of(str.m_Text, offset);
}
size_t gcstring::find_last_of(const gcstring& str, size_t offset) const {
    return m_Text.find_last_of(str.m_Text, offset);
}
size_t gcstring::find_last_of(char ch, size_t offset) const {
    return m_Text.find_last_of(ch, offset);
}
size_t gcstring::find_last_not_of(const gcstring& str, size_t offset) const {
    return m_Text.find_last_not_of(str.m_Text, offset);
}
size_t gcstring::find_last_not_of(char ch, size_t offset) const {
    return m_Text.find_last_not_of(ch, offset);
}
void gcstring::reserve(size_t n) {
    m_Text.reserve(n);
}
gcstring& gcstring::erase(size_t pos, size_t len) {
    m_Text.erase(pos, len);
    return *this;
}
void gcstring::swap(gcstring& Right) {
    m_Text.swap(Right.m_Text);
}

gcstring& gcstring::operator=(const gcstring& str) {
    m_Text = str.m_Text;
    return *this;
}
gcstring& gcstring::operator+=(const gcstring& str) {
    m_Text += str.m_Text;
    return *this;
}
gcstring gcstring::operator+=(const gcstring& str) const {
    return *this + str;
}
gcstring& gcstring::operator+=(const char* pc) {
    m_Text += (pc ? pc : "");
    return *this;
}
gcstring& gcstring::operator+=(char ch) {
    m_Text += ch;
    return *this;
}
gcstring gcstring::operator+=(char ch) const {
    gcstring copy(*this);
    copy.m_Text += ch;
    return copy;
}
bool gcstring::operator==(const gcstring& str) const {
    return m_Text == str.m_Text;
}
bool gcstring::operator==(const char* pc) const {
    return m_Text == (pc ? pc : "");
}
bool gcstring::operator!=(const gcstring& str) const {
    return m_Text != str.m_Text;
}
bool gcstring::operator!=(const char* pc) const {
    return m_Text != (pc ? pc : "");
}
bool gcstring::operator<(const gcstring& str) const {
    return m_Text < str.m_Text;
}
bool gcstring::operator>(const gcstring& str) const {
    return m_Text > str.m_Text;
}
gcstring::operator const char*(void) const {
    return m_Text.c_str();
}

void* gcstring::operator new(size_t uiSize) {
    void* p = std::malloc(uiSize);
    if (!p)
        ThrowBadAlloc(__FILE__, __LINE__);
    return p;
}
void gcstring::operator delete(void* pLoc) {
    std::free(pLoc);
}

gcstring operator+(const gcstring& left, const gcstring& right) {
    gcstring result(left);
    result.append(right);
    return result;
}
gcstring operator+(const gcstring& left, const char* right) {
    return left + gcstring(right);
}
gcstring operator+(const char* left, const gcstring& right) {
    return gcstring(left) + right;
}

std::istream& getline(std::istream& is, gcstring& str) {
    return getline(is, str, '\n');
}
std::istream& getline(std::istream& is, gcstring& str, char delim) {
    std::string line;
    std::getline(is, line, delim);
    str.assign(line.c_str(), line.size());
    return is;
}

void ThrowBadAlloc(const char* source, int line) {
    throw BadAllocException("Memory allocation failed", source, line, "BadAllocException");
}

}  // namespace GENICAM_NAMESPACE

std::ostream& operator<<(std::ostream& ostr, const GenICam::gcstring& str) {
    return ostr << str.c_str();
}

std::istream& operator>>(std::istream& istr, GenICam::gcstring& str) {
    std::string token;
    istr >> token;
    str.assign(token.c_str(), token.size());
    return istr;
}
