#include "platform/win32/pictures.h"

#include "automation/failure.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/module.h"

#include <windows.h>
#include <olectl.h>

namespace talvix {

namespace {

Value LoadPicture(std::int32_t number) {
    const int size = GetSystemMetrics(SM_CXSMICON);
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_ICON;
    description.icon.hicon = static_cast<HICON>(LoadImageW(
        ModuleHandle(), MAKEINTRESOURCEW(number), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
    if (description.icon.hicon == nullptr) {
        throw Failure(failure_number::kUnexpected, u"A picture of the component cannot be loaded");
    }
    ComPtr<IDispatch> picture;
    const HRESULT result =
        OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.OutAny());
    if (FAILED(result)) {
        throw Failure(result, u"A picture object cannot be made");
    }
    return WrapDispatch(picture.Get());
}

} // namespace

Value Win32Pictures::Picture(std::int32_t number) {
    if (number != kMissingFilePicture && number != kLinkPicture) {
        throw Failure(failure_number::kBadIndex, u"There are the pictures 1 and 2");
    }
    Value& picture = pictures_[number - 1];
    if (picture.IsNothing()) {
        picture = LoadPicture(number);
    }
    return picture;
}

} // namespace talvix
