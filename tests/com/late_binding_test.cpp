#include "automation/failure.h"
#include "automation/late.h"
#include "automation/member_table.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/com/variant.h"
#include "tests/fakes/expando.h"

#include <gtest/gtest.h>

#include <array>

namespace talvix {

namespace {

/// A foreign object around one of ours: every call goes through IDispatch both ways.
Late Abroad(Object object, int* lookUps = nullptr) {
    class Foreign : public Unknown<IDispatch> {
    public:
        Foreign(Object object, int* lookUps) : answers_(std::move(object)), lookUps_(lookUps) {}
        STDMETHODIMP GetTypeInfoCount(UINT* count) override {
            *count = 0;
            return S_OK;
        }
        STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
        STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID,
                                   DISPID* ids) override {
            *lookUps_ += lookUps_ != nullptr ? 1 : 0;
            return answers_.IdsOfNames(id, names, count, ids);
        }
        STDMETHODIMP Invoke(DISPID member, REFIID id, LCID, WORD flags, DISPPARAMS* parameters,
                            VARIANT* result, EXCEPINFO* exception, UINT*) override {
            return answers_.Invoke(member, id, flags, parameters, result, exception);
        }

    private:
        DispatchAnswers answers_;
        int* lookUps_;
    };
    static int ignored = 0;
    const auto foreign =
        MakeCom<Foreign>(std::move(object), lookUps == nullptr ? &ignored : lookUps);
    return Late(WrapDispatch(foreign.Get()));
}

class Calculator : public Tabled<Calculator> {
public:
    static const MemberTable<Calculator>& Members() {
        static const MemberTable<Calculator> members(
            {{{u"Item", access::kGet | access::kPut, u"key"},
              [](Calculator& self, const MemberCall& call) -> Value {
                  if (call.IsPut()) {
                      self.put = *call.put;
                      return {};
                  }
                  return call.At(0);
              }},
             {{u"Join", access::kMethod, u"first second [third]"},
              [](Calculator&, const MemberCall& call) -> Value {
                  return Shown(call.At(0)) + u"-" + Shown(call.At(1)) + u"-" + Shown(call.At(2));
              }},
             {{u"Break", access::kMethod, u""},
              [](Calculator&, const MemberCall&) -> Value {
                  throw Failure(static_cast<std::int32_t>(0x80041234), u"mit Absicht: Größe");
              }}},
            kDefaultMember);
        return members;
    }
    std::u16string TypeName() const override { return u"Calculator"; }
    Value put;
};

/// Answers only IDispatchEx, as classes of script engines do.
class ScriptObject : public Unknown<IDispatchEx> {
public:
    explicit ScriptObject(Object object) : answers_(std::move(object)) {}
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP GetDispID(BSTR name, DWORD, DISPID* id) override {
        LPOLESTR names = name;
        return answers_.IdsOfNames(IID_NULL, &names, 1, id);
    }
    STDMETHODIMP InvokeEx(DISPID id, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                          EXCEPINFO* exception, IServiceProvider*) override {
        return answers_.Invoke(id, IID_NULL, flags, parameters, result, exception);
    }
    STDMETHODIMP DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
    STDMETHODIMP GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

protected:
    void* Find(REFIID id) override {
        return id == IID_IDispatch ? static_cast<IDispatchEx*>(this) : Unknown::Find(id);
    }

private:
    DispatchAnswers answers_;
};

} // namespace

TEST(LateBinding, ANameIsLookedUpOncePerObject) {
    auto object = std::make_shared<Expando>(u"Wirt");
    object->With(u"Name", u"x");
    int lookUps = 0;
    const Late late = Abroad(object, &lookUps);
    for (int at = 0; at < 5; ++at) {
        EXPECT_EQ(late.Call(u"Name"), Value(u"x"));
    }
    EXPECT_EQ(lookUps, 1);
}

TEST(LateBinding, OptionalAndNamedArgumentsArrive) {
    const Late late = Abroad(std::make_shared<Calculator>());
    EXPECT_EQ(late.Call(u"Join", 1, 2), Value(u"1-2-missing"));
    EXPECT_EQ(late.Call(u"join", Null(), true, Missing()), Value(u"-True-missing"));
    EXPECT_THROW(late.Call(u"Join", 1, Missing(), 3), Failure);
    const std::array<Value, 3> values{u"a", u"c", u"b"};
    const std::array<std::u16string_view, 2> names{u"third", u"second"};
    EXPECT_EQ(InvokeByName(*late.AsObject(), u"Join", access::kMethod, {values, names}),
              Value(u"a-b-c"));
    const std::array<std::u16string_view, 1> unknown{u"vierte"};
    EXPECT_THROW(InvokeByName(*late.AsObject(), u"Join", access::kMethod, {values, unknown}),
                 Failure);
}

TEST(LateBinding, TheDefaultMemberIsNumberZero) {
    const auto target = std::make_shared<Calculator>();
    const Late late = Abroad(target);
    const std::array<Value, 1> key{u"Schlüssel"};
    EXPECT_EQ(late.AsObject()->Invoke(kDefaultMember, access::kCall, {key, {}}),
              Value(u"Schlüssel"));
    late.SetAt(u"Item", u"k", 5);
    EXPECT_EQ(target->put, Value(5));
    late.SetAt(u"Item", u"k", std::make_shared<Expando>(u"Bild"));
    EXPECT_TRUE(target->put.Is<Object>());
}

TEST(LateBinding, AFailureArrivesWithNumberAndDescription) {
    const Late late = Abroad(std::make_shared<Calculator>());
    try {
        late.Call(u"Break");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number(), static_cast<std::int32_t>(0x80041234));
        EXPECT_EQ(failure.Text(), u"mit Absicht: Größe");
    }
    EXPECT_THROW(late.Call(u"Unbekannt"), Failure);
    EXPECT_THROW(late.Call(u"Join", 1), Failure);
}

TEST(LateBinding, ScriptObjectsAreReachedThroughIDispatchEx) {
    auto inner = std::make_shared<Expando>(u"Innen");
    inner->With(u"Caption", u"alt");
    const auto script = MakeCom<ScriptObject>(inner);
    const Late late{WrapDispatch(script.Get())};
    late.Set(u"Caption", u"neu");
    EXPECT_EQ(late.Call(u"Caption"), Value(u"neu"));
    EXPECT_THROW(late.Call(u"Fehlt"), Failure);
}

TEST(LateBinding, APropertyWithoutArgumentsMayYieldACollectionThatTakesThem) {
    class Host : public Expando {
    public:
        Host() : Expando(u"Host") {}
        Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override {
            if (!arguments.values.empty()) {
                throw Failure(static_cast<std::int32_t>(0x80004005), u"");
            }
            return Expando::Invoke(member, access, arguments);
        }
    };
    auto host = std::make_shared<Host>();
    host->With(u"Pages", std::make_shared<Calculator>());
    class FailingScript : public ScriptObject {
    public:
        using ScriptObject::ScriptObject;
        STDMETHODIMP InvokeEx(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception,
                              IServiceProvider* caller) override {
            return parameters->cArgs > 0 ? E_FAIL
                                         : ScriptObject::InvokeEx(id, locale, flags, parameters,
                                                                  result, exception, caller);
        }
    };
    const auto script = MakeCom<FailingScript>(host);
    EXPECT_EQ(Late{WrapDispatch(script.Get())}.Call(u"Pages", u"Dokumente"), Value(u"Dokumente"));
}

TEST(LateBinding, CallsWithRawParametersAreCheckedAndNeverHarm) {
    const auto dispatch = ComPtr<IDispatch>::From(UnknownOf(std::make_shared<Calculator>()).Get());
    VARIANT arguments[3];
    for (VARIANT& argument : arguments) {
        VariantInit(&argument);
    }
    DISPID names[1] = {-77};
    DISPPARAMS wrongName{arguments, names, 1, 1};
    EXPECT_EQ(
        dispatch->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &wrongName, nullptr, nullptr, nullptr),
        DISP_E_PARAMNOTFOUND);
    DISPPARAMS tooMany{arguments, nullptr, 0x7FFFFFFF, 0};
    EXPECT_EQ(
        dispatch->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &tooMany, nullptr, nullptr, nullptr),
        DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(
        dispatch->Invoke(1, IID_IDispatch, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
        DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(
        dispatch->Invoke(99, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
        DISP_E_MEMBERNOTFOUND);
    EXCEPINFO exception{};
    EXPECT_EQ(
        dispatch->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, &exception, nullptr),
        DISP_E_EXCEPTION);
    EXPECT_EQ(Bstr::View(exception.bstrSource), u"Calculator");
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr), E_INVALIDARG);
}

TEST(LateBinding, TheHostsObjectsAreGivenBackAfterACall) {
    const auto held = std::make_shared<Expando>(u"Wirtsobjekt");
    const auto dispatch = ComPtr<IDispatch>::From(UnknownOf(std::make_shared<Calculator>()).Get());
    Variant argument;
    ToVariant(held, *argument.Get());
    DISPPARAMS parameters{argument.Get(), nullptr, 1, 0};
    Variant result;
    const long before = held.use_count();
    EXPECT_EQ(dispatch->Invoke(0, IID_NULL, 0, DISPATCH_PROPERTYGET, &parameters, nullptr, nullptr,
                               nullptr),
              S_OK);
    EXPECT_EQ(held.use_count(), before);
}

} // namespace talvix
