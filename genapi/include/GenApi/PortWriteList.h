// A list of port writes: recorded by a port node between StartRecording and StopRecording, and replayed
// into a port later (a configuration written once, then sent again in one go).
#ifndef GENAPI_PORTWRITELIST_H
#define GENAPI_PORTWRITELIST_H

#include <GenApi/IPortRecorder.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CPortWriteList : public IPortWriteList {
public:
    CPortWriteList();
    virtual ~CPortWriteList();

    // Appends a copy of the written bytes.
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length);
    // Writes every entry into the port, in the order they were written.
    virtual void Replay(IPort* pPort);
    // A number the user keeps with the list (-1 until set), e.g. to tell which configuration it holds.
    virtual void SetCookie(const int64_t Value);
    virtual int64_t GetCookie();

private:
    CPortWriteList(const CPortWriteList&);
    CPortWriteList& operator=(const CPortWriteList&);

    struct SEntries;
    SEntries* m_pEntries;
    int64_t m_Cookie;
};

}  // namespace GENAPI_NAMESPACE

#endif
