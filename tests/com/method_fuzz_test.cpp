// Every member of every object, called as no client should: through IDispatch, with all kinds of
// values, wrong counts, named arguments, null pointers, and arguments that change the grid while
// they are read.
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/wide.h"
#include "tests/com/component_rig.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <oleauto.h>

#include <deque>
#include <random>

namespace talvix {

namespace {

/// So many of a hundred of the calls that the proof asks for.
std::size_t Calls(std::size_t ofHundred) {
    return ProofCount(100'000, 10'000'000) * ofHundred / 100;
}

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    bool OneIn(int count) { return Below(count) == 0; }
    template <typename Element, std::size_t count>
    const Element& Of(const Element (&list)[count]) {
        return list[static_cast<std::size_t>(Below(static_cast<int>(count)))];
    }

private:
    std::mt19937 engine_;
};

std::u16string SomeText(Random& random) {
    static const std::u16string known[] = {u"",      u"Name", u"a",      u"-1",    u"2",
                                           u"1e400", u"True", u"31.12.", u"NAME",  u"b",
                                           u"\t;\"", u"0x7F", u"\xD800", u"\x0001"};
    switch (random.Below(10)) {
    case 0:
        return std::u16string(static_cast<std::size_t>(random.Below(3000)), u'x');
    case 1:
        return std::u16string(3, u'\0') + u"x";
    case 2: {
        std::u16string text;
        for (int unit = random.Below(12); unit > 0; --unit) {
            text += static_cast<char16_t>(random.Below(0x10000));
        }
        return text;
    }
    default:
        return random.Of(known);
    }
}

/// Makes arguments and takes everything back after the call.
class ArgumentMaker {
public:
    ArgumentMaker(Random& random, const std::vector<ComPtr<IDispatch>>& objects)
        : random_(random), objects_(objects) {}
    ArgumentMaker(const ArgumentMaker&) = delete;
    ArgumentMaker& operator=(const ArgumentMaker&) = delete;
    ~ArgumentMaker() {
        for (VARIANT& owned : owned_) {
            VariantClear(&owned);
        }
    }

    VARIANT Make(int depth = 0) {
        if (random_.OneIn(4)) {
            return ByReference(depth);
        }
        VARIANT& made = owned_.emplace_back();
        Fill(made, depth);
        return made;
    }

private:
    VARIANT ByReference(int depth) {
        VARIANT argument{};
        if (random_.OneIn(8)) {
            static constexpr VARTYPE kinds[] = {VT_I4,       VT_BSTR, VT_VARIANT,
                                                VT_DISPATCH, VT_BOOL, VT_ARRAY | VT_VARIANT};
            argument.vt = static_cast<VARTYPE>(random_.Of(kinds) | VT_BYREF); // of nothing
            return argument;
        }
        VARIANT& home = owned_.emplace_back();
        Fill(home, depth);
        const bool asVariant = random_.OneIn(2) || home.vt == VT_EMPTY || home.vt == VT_NULL;
        argument.vt = static_cast<VARTYPE>((asVariant ? VARTYPE{VT_VARIANT} : home.vt) | VT_BYREF);
        argument.byref = asVariant || home.vt == VT_DECIMAL ? static_cast<void*>(&home)
                                                            : static_cast<void*>(&home.lVal);
        return argument;
    }

    void Fill(VARIANT& made, int depth) {
        static constexpr VARTYPE numbers[] = {
            VT_I2,  VT_I4, VT_R4,  VT_R8,  VT_CY,   VT_DATE,  VT_BOOL,    VT_I1,    VT_UI1, VT_UI2,
            VT_UI4, VT_I8, VT_UI8, VT_INT, VT_UINT, VT_ERROR, VT_DECIMAL, VT_EMPTY, VT_NULL};
        switch (random_.Below(8)) {
        case 0:
        case 1:
            FillText(made);
            break;
        case 2:
            made.vt = random_.OneIn(4) ? VT_UNKNOWN : VT_DISPATCH;
            made.pdispVal = objects_.empty() || random_.OneIn(3) ? nullptr : AnObject();
            break;
        case 3:
            FillArray(made, depth);
            break;
        case 4:
            made.vt = VT_I4; // often a number that means something
            made.lVal = random_.Below(6) - 1;
            break;
        default:
            made.llVal = random_.OneIn(2) ? random_.Below(5) - 2
                                          : (static_cast<LONGLONG>(random_.Below(INT_MAX)) << 33) |
                                                random_.Below(INT_MAX);
            made.vt = random_.Of(numbers);
            if (made.vt == VT_ERROR && random_.OneIn(2)) {
                made.scode = DISP_E_PARAMNOTFOUND;
            }
            break;
        }
    }

    void FillText(VARIANT& made) {
        const std::u16string text = SomeText(random_);
        made.vt = VT_BSTR;
        made.bstrVal = random_.OneIn(10)
                           ? nullptr
                           : SysAllocStringLen(WideUnits(text), static_cast<UINT>(text.size()));
    }

    void FillArray(VARIANT& made, int depth) {
        if (depth > 2 || random_.OneIn(4)) {
            made.vt = VT_ARRAY | VT_VARIANT; // without an array
            made.parray = nullptr;
            return;
        }
        SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(random_.Below(4)), random_.Below(3) - 1},
                                    {static_cast<ULONG>(random_.Below(3)), 0}};
        const bool ofNumbers = random_.OneIn(2);
        const UINT dimensions = random_.OneIn(4) ? 2 : 1;
        made.vt = static_cast<VARTYPE>(VT_ARRAY | (ofNumbers ? VT_I4 : VT_VARIANT));
        made.parray = SafeArrayCreate(ofNumbers ? VT_I4 : VT_VARIANT, dimensions, bounds);
        for (ULONG at = 0; dimensions == 1 && !ofNumbers && at < bounds[0].cElements; ++at) {
            LONG place = bounds[0].lLbound + static_cast<LONG>(at);
            VARIANT element{};
            Fill(element, depth + 1);
            SafeArrayPutElement(made.parray, &place, &element);
            VariantClear(&element);
        }
    }

    IDispatch* AnObject() {
        IDispatch* object =
            objects_[static_cast<std::size_t>(random_.Below(static_cast<int>(objects_.size())))]
                .Get();
        object->AddRef();
        return object;
    }

    Random& random_;
    const std::vector<ComPtr<IDispatch>>& objects_;
    std::deque<VARIANT> owned_;
};

/// Calls members of the objects that it is given and of those that they yield.
class Fuzzer {
public:
    Fuzzer(unsigned seed, std::vector<DISPID> members)
        : random_(seed), members_(std::move(members)) {}

    void Add(IDispatch* object) { objects_.emplace_back(object); }

    void Call() {
        const std::size_t which =
            static_cast<std::size_t>(random_.Below(static_cast<int>(objects_.size())));
        const ComPtr<IDispatch> target = objects_[which];
        ArgumentMaker maker(random_, objects_);
        std::vector<VARIANT> arguments(static_cast<std::size_t>(random_.Below(6)));
        for (VARIANT& argument : arguments) {
            argument = maker.Make();
        }
        static constexpr WORD ways[] = {1, 2, 3, 3, 3, 4, 8, 12, 4, 0, 0xFFFF};
        const WORD way = random_.Of(ways);
        std::vector<DISPID> named = NamedFor(way, arguments.size());
        DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                              static_cast<UINT>(named.size())};
        VARIANT result{};
        EXCEPINFO exception{};
        UINT wrong = 0;
        const DISPID member = members_.empty() ? random_.Below(34) - 4
                                               : members_[static_cast<std::size_t>(random_.Below(
                                                     static_cast<int>(members_.size())))];
        const HRESULT code = target->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, way,
                                            random_.OneIn(50) ? nullptr : &parameters,
                                            random_.OneIn(10) ? nullptr : &result,
                                            random_.OneIn(10) ? nullptr : &exception, &wrong);
        answered_ += code == S_OK ? 1 : 0;
        undescribed_ += code == DISP_E_EXCEPTION && exception.scode != 0 &&
                                SysStringLen(exception.bstrDescription) == 0
                            ? 1
                            : 0;
        for (BSTR text :
             {exception.bstrDescription, exception.bstrSource, exception.bstrHelpFile}) {
            SysFreeString(text);
        }
        TakeYielded(result);
    }

    std::size_t Answered() const { return answered_; }
    std::size_t Undescribed() const { return undescribed_; }

private:
    std::vector<DISPID> NamedFor(WORD way, std::size_t count) {
        std::vector<DISPID> named;
        if ((way & 12) != 0 && count > 0 && !random_.OneIn(6)) {
            named.push_back(DISPID_PROPERTYPUT);
        } else if (random_.OneIn(8)) {
            for (int at = random_.Below(static_cast<int>(count) + 1); at > 0; --at) {
                named.push_back(random_.Below(5) - 1);
            }
        }
        return named;
    }

    void TakeYielded(VARIANT& result) {
        constexpr std::size_t kMost = 40;
        if (result.vt == VT_DISPATCH && result.pdispVal != nullptr) {
            if (objects_.size() < kMost) {
                objects_.emplace_back(result.pdispVal);
            } else { // an earlier one may die, but not those at the start
                objects_[static_cast<std::size_t>(3 + random_.Below(kMost - 3))] =
                    ComPtr<IDispatch>(result.pdispVal);
            }
        }
        EXPECT_EQ(VariantClear(&result), S_OK) << "a result is a value";
    }

    Random random_;
    std::vector<DISPID> members_; ///< "" for all
    std::vector<ComPtr<IDispatch>> objects_;
    std::size_t answered_ = 0;
    std::size_t undescribed_ = 0;
};

/// Does something to the grid while its value is asked for.
class Treacherous : public LateObject {
public:
    explicit Treacherous(std::function<void()> deed) : deed_(std::move(deed)) {}
    std::optional<MemberId> FindMember(std::u16string_view) override { return kDefaultMember; }
    Value Invoke(MemberId, unsigned, const Arguments&) override {
        deed_();
        return u"Name";
    }
    std::u16string TypeName() const override { return u"Treacherous"; }

private:
    std::function<void()> deed_;
};

IDispatch* DispatchOf(const Late& object) {
    return dynamic_cast<const DispatchObject&>(*object.AsObject()).Dispatch();
}

} // namespace

TEST(MethodFuzz, TheGridAnswersWhateverItIsGiven) {
    const std::size_t calls = Calls(80);
    constexpr std::size_t kRound = 2'000;
    std::size_t answered = 0;
    for (std::size_t round = 0; round * kRound < calls; ++round) {
        SCOPED_TRACE("seed " + std::to_string(round + 1));
        const Late grid = CreateByName(u"TalvixGrid.Grid");
        for (const auto* key : {u"Name", u"a", u"b"}) {
            grid[u"Columns"](u"Add", key);
        }
        for (int row = 0; row < 5; ++row) {
            grid[u"Rows"][u"Add"].SetAt(u"Value", u"Name", row);
        }
        const auto treacherous = ComPtr<IDispatch>::From(
            UnknownOf(std::make_shared<Treacherous>([&] { grid[u"Rows"].Call(u"Clear"); })).Get());
        Fuzzer fuzzer(static_cast<unsigned>(round + 1), {});
        fuzzer.Add(DispatchOf(grid));
        fuzzer.Add(DispatchOf(grid[u"Rows"]));
        fuzzer.Add(treacherous.Get());
        for (std::size_t call = 0; call < kRound; ++call) {
            fuzzer.Call();
        }
        answered += fuzzer.Answered();
        EXPECT_EQ(fuzzer.Undescribed(), 0U) << "an error says what was wrong";
        grid.Set(u"Filter", u"");
        grid.Set(u"Redraw", true);
        grid[u"Rows"].Call(u"Clear");
        const Late row = grid[u"Rows"][u"Add"];
        row.SetAt(u"Value", 0, u"nachher");
        EXPECT_EQ(row.Call(u"Value", 0), Value(u"nachher"));
    }
    EXPECT_GT(answered, calls / 20) << "many calls reach what they ask for";
}

TEST(MethodFuzz, AMainWithoutAHostAnswersWhateverItIsGiven) {
    DialogAnswers answers;
    const std::size_t calls = Calls(15);
    // Without a host only these do nothing that a user would see.
    Fuzzer fuzzer(7, {1, 2, 3, 4, 8, 10, 11, 22, 23, 0, -4, 24, 99});
    const Late main = CreateByName(u"TalvixDMS.Main");
    fuzzer.Add(DispatchOf(main));
    for (std::size_t call = 0; call < calls; ++call) {
        fuzzer.Call();
    }
    EXPECT_GT(fuzzer.Answered(), calls / 4);
    EXPECT_EQ(answers.Seen(), std::vector<std::u16string>{});
}

TEST(MethodFuzz, AnAttachedMainKeepsItsListInOrder) {
    DialogAnswers answers;
    ComponentRig rig;
    rig.Attach();
    rig.folder.Make(u"a.doc", 10);
    Fuzzer fuzzer(11, {3, 4, 6, 7, 8, 10, 13, 22, 23});
    fuzzer.Add(DispatchOf(rig.main));
    const std::size_t calls = Calls(5);
    for (std::size_t call = 0; call < calls; ++call) {
        fuzzer.Call();
    }
    rig.main.Set(u"StopImport", false);
    const int before = rig.Rows();
    rig.main.Call(u"AddFile", rig.folder.Path() + u"\\a.doc", u"nachher", u"", u"");
    EXPECT_EQ(rig.Rows(), before + 1);
    EXPECT_EQ(rig.grid.Call(u"Redraw"), Value(true));
    StateProof("method fuzz", Calls(100), "calls on the grid's and the component's objects");
}

} // namespace talvix
