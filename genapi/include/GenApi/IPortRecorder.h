// Interfaces for recording and replaying port writes.
#ifndef GENAPI_IPORTRECORDER_H
#define GENAPI_IPORTRECORDER_H

#include <GenApi/IPort.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IPortWriteList {
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) = 0;
    virtual void Replay(IPort * pPort) = 0;
    virtual void SetCookie(const int64_t Value) = 0;
    virtual int64_t GetCookie() = 0;
    virtual ~IPortWriteList() {}
};

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IPortReplay : virtual public IPort {
    virtual void Replay(IPortWriteList * pPortRecorder, bool Invalidate = true) = 0;
};

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IPortRecorder : public IPortReplay {
    virtual void StartRecording(IPortWriteList * pPortRecorder) = 0;
    virtual void StopRecording() = 0;
};

// A reference forwarding the recording port interface to a bound node.
template <class T, class I = IPortRecorder>
class CPortRecorderRefT : public CPortRefT<T, I> {
public:
    virtual void Replay(IPortWriteList* pPortRecorder, bool Invalidate = true) {
        this->Bound()->Replay(pPortRecorder, Invalidate);
    }
    virtual void StartRecording(IPortWriteList* pPortRecorder) {
        this->Bound()->StartRecording(pPortRecorder);
    }
    virtual void StopRecording() { this->Bound()->StopRecording(); }
};

typedef CPortRecorderRefT<IPortRecorder> CPortRecorderRef;

}  // namespace GENAPI_NAMESPACE

#endif
