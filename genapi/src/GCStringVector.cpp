// gcstring_vector on top of std::vector.
#include <Base/GCStringVector.h>
#include <algorithm>

namespace GENICAM_NAMESPACE {

gcstring_vector::gcstring_vector(void) {}
gcstring_vector::gcstring_vector(size_t uiSize, const gcstring& str) : _pv(uiSize, str) {}
gcstring_vector::gcstring_vector(const gcstring_vector& obj) : _pv(obj._pv) {}
gcstring_vector::~gcstring_vector(void) {}

void gcstring_vector::assign(size_t n, const gcstring& val) {
    _pv.assign(n, val);
}
void gcstring_vector::clear(void) {
    _pv.clear();
}
gcstring_vector::iterator gcstring_vector::erase(iterator pos) {
    const intptr_t index = pos - begin();
    _pv.erase(_pv.begin() + index);
    return begin() + index;
}
gcstring& gcstring_vector::at(size_t uiIndex) {
    return _pv.at(uiIndex);
}
const gcstring& gcstring_vector::at(size_t uiIndex) const {
    return _pv.at(uiIndex);
}
void gcstring_vector::push_back(const gcstring& str) {
    _pv.push_back(str);
}
void gcstring_vector::pop_back(void) {
    _pv.pop_back();
}
size_t gcstring_vector::size(void) const {
    return _pv.size();
}
size_t gcstring_vector::capacity(void) const {
    return _pv.capacity();
}
size_t gcstring_vector::max_size(void) const {
    return _pv.max_size();
}
void gcstring_vector::reserve(size_t uiSize) {
    _pv.reserve(uiSize);
}
void gcstring_vector::resize(size_t uiSize, const gcstring& str) {
    _pv.resize(uiSize, str);
}
gcstring_vector::iterator gcstring_vector::insert(iterator pos, const gcstring& str) {
    const intptr_t index = pos - begin();
    _pv.insert(_pv.begin() + index, str);
    return begin() + index;
}
bool gcstring_vector::contains(const gcstring& str) const {
    return std::find(_pv.begin(), _pv.end(), str) != _pv.end();
}
gcstring_vector::const_iterator gcstring_vector::begin(void) const {
    return const_iterator(const_cast<gcstring*>(_pv.data()));
}
gcstring_vector::const_iterator gcstring_vector::end(void) const {
    return const_iterator(const_cast<gcstring*>(_pv.data()) + _pv.size());
}
gcstring_vector::iterator gcstring_vector::begin(void) {
    return iterator(_pv.data());
}
gcstring_vector::iterator gcstring_vector::end(void) {
    return iterator(_pv.data() + _pv.size());
}
bool gcstring_vector::empty(void) const {
    return _pv.empty();
}
gcstring& gcstring_vector::front(void) {
    return _pv.front();
}
const gcstring& gcstring_vector::front(void) const {
    return _pv.front();
}
gcstring& gcstring_vector::back(void) {
    return _pv.back();
}
const gcstring& gcstring_vector::back(void) const {
    return _pv.back();
}
void gcstring_vector::assign(const gcstring_vector& obj) {
    _pv = obj._pv;
}
void gcstring_vector::erase(size_t uiIndex) {
    _pv.erase(_pv.begin() + static_cast<ptrdiff_t>(uiIndex));
}
void gcstring_vector::insert(size_t uiIndex, const gcstring& str) {
    _pv.insert(_pv.begin() + static_cast<ptrdiff_t>(uiIndex), str);
}
gcstring_vector& gcstring_vector::operator=(const gcstring_vector& obj) {
    _pv = obj._pv;
    return *this;
}
gcstring& gcstring_vector::operator[](size_t uiIndex) {
    return _pv[uiIndex];
}
const gcstring& gcstring_vector::operator[](size_t uiIndex) const {
    return _pv[uiIndex];
}

}  // namespace GENICAM_NAMESPACE
