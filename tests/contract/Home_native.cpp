#include "contract/Home.h"
#include "fake/FakePlatformTest.h"

namespace {

class FakeHome : public Home {
 public:
    FakeHome() {
        fake_.files.capacity = std::int64_t{1} << 30;
        fake_.files.AddDirectory(Directory());
    }

    Platform& Ports() override { return ThePlatform(); }

    WindowHandle MakeWindow(const std::wstring& title, Procedure procedure) override {
        return fake_.windows.AddWindow(title, std::move(procedure));
    }
    void EndWindow(WindowHandle window) override { fake_.windows.RemoveWindow(window); }
    ProcedureAddress MakeProcedure(Procedure procedure) override {
        return fake_.windows.AddProcedure(std::move(procedure));
    }
    bool PumpUntil(const std::function<bool()>& condition) override { return condition(); }

    std::wstring Directory() override { return L"C:\\Contract\\"; }
    void SetReadOnly(const std::wstring& path, bool readOnly) override {
        fake_.files.SetReadOnly(path, readOnly);
    }

    WindowHandle OtherWindow() override { return fake_.clipboard.otherProgram; }
    void OtherCopies(const std::vector<FormatBytes>& formats) override {
        std::vector<FakeClipboard::Offer> offers;
        for (const FormatBytes& one : formats) {
            offers.push_back(OfferOf(one));
            offers.back().late = one.late;
        }
        fake_.clipboard.OtherProgramCopies(offers);
    }
    std::optional<std::string> OtherReads(FormatNumber format) override {
        return fake_.clipboard.OtherProgramReads(format);
    }
    void OtherHolds() override { fake_.clipboard.OtherProgramHolds(1'000'000); }
    void OtherReleases() override { fake_.clipboard.OtherProgramHolds(0); }
    unsigned CodePage() override { return 1252; }

 private:
    static FakeClipboard::Offer OfferOf(const FormatBytes& one) {
        switch (one.format) {
            case 3:
                return FakeClipboard::Picture(one.bytes);
            case 14:
                return FakeClipboard::Enhanced(one.bytes);
            default:
                return FakeClipboard::Bytes(one.format, one.bytes);
        }
    }

    FakePlatform fake_;
};

}  // namespace

std::unique_ptr<Home> Home::Make() {
    return std::make_unique<FakeHome>();
}
