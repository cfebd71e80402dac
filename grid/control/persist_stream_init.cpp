#include "grid/control/persist_stream_init.h"

#include "grid/model/saved_layout.h"
#include "platform/win32/com/guards.h"

#include <cstring>

namespace talvix::grid {

namespace {

constexpr char kMark[4] = {'T', 'L', 'X', 'G'};
constexpr std::uint32_t kLongest = 4U << 20U; // units of text

/// What stands before the text.
struct Header {
    char mark[4]{};
    std::uint32_t units = 0;
};

HRESULT ReadAll(IStream& stream, void* bytes, ULONG count) {
    ULONG read = 0;
    const HRESULT result = stream.Read(bytes, count, &read);
    return FAILED(result) ? result : read == count ? S_OK : STG_E_READFAULT;
}

HRESULT WriteAll(IStream& stream, const void* bytes, ULONG count) {
    ULONG written = 0;
    const HRESULT result = stream.Write(bytes, count, &written);
    return FAILED(result) ? result : written == count ? S_OK : STG_E_MEDIUMFULL;
}

} // namespace

STDMETHODIMP PersistStreamInitPart::IsDirty() {
    HRESULT result = S_FALSE;
    Guarded([&] {
        result = SaveState(*model_) == saved_ ? S_FALSE : S_OK;
        return S_OK;
    });
    return result;
}

STDMETHODIMP PersistStreamInitPart::Load(IStream* stream) {
    if (stream == nullptr) {
        return E_POINTER;
    }
    return Guarded([&]() -> HRESULT {
        Header header;
        if (const HRESULT read = ReadAll(*stream, &header, sizeof header); FAILED(read)) {
            return read;
        }
        if (std::memcmp(header.mark, kMark, sizeof kMark) != 0 || header.units > kLongest) {
            return STG_E_INVALIDHEADER;
        }
        std::u16string text(header.units, u'\0');
        const auto bytes = static_cast<ULONG>(text.size() * sizeof(char16_t));
        if (const HRESULT read = ReadAll(*stream, text.data(), bytes); FAILED(read)) {
            return read;
        }
        LoadState(*model_, text);
        saved_ = SaveState(*model_);
        return S_OK;
    });
}

STDMETHODIMP PersistStreamInitPart::Save(IStream* stream, BOOL clearsDirty) {
    if (stream == nullptr) {
        return E_POINTER;
    }
    return Guarded([&]() -> HRESULT {
        std::u16string text = SaveState(*model_);
        Header header;
        std::memcpy(header.mark, kMark, sizeof kMark);
        header.units = static_cast<std::uint32_t>(text.size());
        HRESULT result = WriteAll(*stream, &header, sizeof header);
        if (SUCCEEDED(result)) {
            result =
                WriteAll(*stream, text.data(), static_cast<ULONG>(text.size() * sizeof(char16_t)));
        }
        if (SUCCEEDED(result) && clearsDirty != FALSE) {
            saved_ = std::move(text);
        }
        return result;
    });
}

STDMETHODIMP PersistStreamInitPart::GetSizeMax(ULARGE_INTEGER* size) {
    if (size == nullptr) {
        return E_POINTER;
    }
    return Guarded([&] {
        size->QuadPart = sizeof(Header) + SaveState(*model_).size() * sizeof(char16_t);
        return S_OK;
    });
}

STDMETHODIMP PersistStreamInitPart::InitNew() {
    return Guarded([&] {
        saved_ = SaveState(*model_);
        return S_OK;
    });
}

} // namespace talvix::grid
