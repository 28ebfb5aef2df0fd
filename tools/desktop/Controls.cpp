#include "desktop/Controls.h"

#include <algorithm>

#include "desktop/Utf8.h"
#include "resources/pictures.h"

namespace {

class ItemIsGone : public DriverError {
 public:
    ItemIsGone() : DriverError("the tree's item is gone") {}
};

constexpr std::size_t kMaxText = 2048;
constexpr std::size_t kMaxItems = 20000;

std::wstring Joined(const std::vector<std::wstring>& parts) {
    std::wstring text;
    for (const std::wstring& part : parts) {
        if (!text.empty()) text += L" | ";
        text += part;
    }
    return text;
}

POINT Middle(const RECT& rectangle) {
    return {(rectangle.left + rectangle.right) / 2, (rectangle.top + rectangle.bottom) / 2};
}

POINT OnScreen(Window window, POINT point) {
    ClientToScreen(window.Handle(), &point);
    return point;
}

// Asks for a rectangle by a message whose argument is the address of one, with `left` preset.
RECT RectangleBy(Window window, UINT message, WPARAM wParam, LONG left = 0) {
    RemoteMemory memory(window, sizeof(RECT));
    memory.Put(RECT{left, 0, 0, 0});
    if (window.Send(message, wParam, memory.Parameter()) == 0) {
        throw DriverError("there is no item to ask for its place");
    }
    return memory.Get<RECT>();
}

std::vector<std::wstring> LinesBy(Window window, UINT count, UINT length, UINT text) {
    std::vector<std::wstring> lines;
    const LRESULT lineCount = window.Send(count);
    for (LRESULT line = 0; line < lineCount; ++line) {
        const LRESULT size = window.Send(length, static_cast<WPARAM>(line));
        std::wstring content(static_cast<std::size_t>(std::max<LRESULT>(size, 0)) + 1, L'\0');
        window.Send(text, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(content.data()));
        content.pop_back();
        lines.push_back(std::move(content));
    }
    return lines;
}

}  // namespace

std::wstring PictureKey(int image) {
    static const std::vector<std::wstring_view> keys = [] {
        std::vector<std::wstring_view> all;
        for (const Picture& picture : kTreePictures)
            all.push_back(picture.key);
        for (const Picture& picture : kFormatPictures)
            if (std::find(all.begin(), all.end(), picture.key) == all.end()) all.push_back(picture.key);
        return all;
    }();
    if (image < 0 || static_cast<std::size_t>(image) >= keys.size()) return std::to_wstring(image);
    return std::wstring(keys[static_cast<std::size_t>(image)]);
}

HTREEITEM TreeControl::Next(HTREEITEM item, WPARAM relation) const {
    return reinterpret_cast<HTREEITEM>(
        window_.Send(TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

TreeLine TreeControl::LineOf(HTREEITEM item, int depth) const {
    RemoteMemory memory(window_, sizeof(TVITEMW) + kMaxText * sizeof(wchar_t));
    TVITEMW question{};
    question.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_IMAGE | TVIF_STATE;
    question.hItem = item;
    question.stateMask = TVIS_EXPANDED | TVIS_SELECTED;
    question.pszText = reinterpret_cast<wchar_t*>(static_cast<char*>(memory.Address()) + sizeof(TVITEMW));
    question.cchTextMax = static_cast<int>(kMaxText);
    memory.Put(question);
    if (window_.Send(TVM_GETITEMW, 0, memory.Parameter()) == 0) throw ItemIsGone();
    const auto answer = memory.Get<TVITEMW>();
    TreeLine line;
    line.depth = depth;
    line.text = memory.GetText(sizeof(TVITEMW), kMaxText);
    line.image = answer.iImage;
    line.expanded = (answer.state & TVIS_EXPANDED) != 0;
    line.selected = (answer.state & TVIS_SELECTED) != 0;
    line.item = item;
    return line;
}

// The program may change its tree while it is read; then it is read again.
std::vector<TreeLine> TreeControl::Lines() const {
    constexpr int kMostReadings = 50;
    for (int reading = 1;; ++reading) {
        try {
            return LinesAtOnce();
        } catch (const ItemIsGone&) {
            if (reading == kMostReadings) throw;
        }
    }
}

std::vector<TreeLine> TreeControl::LinesAtOnce() const {
    std::vector<TreeLine> lines;
    std::vector<HTREEITEM> above;
    HTREEITEM item = Next(nullptr, TVGN_ROOT);
    while (item != nullptr && lines.size() < kMaxItems) {
        lines.push_back(LineOf(item, static_cast<int>(above.size())));
        if (HTREEITEM child = Next(item, TVGN_CHILD)) {
            above.push_back(item);
            item = child;
            continue;
        }
        HTREEITEM next = Next(item, TVGN_NEXT);
        while (next == nullptr && !above.empty()) {
            next = Next(above.back(), TVGN_NEXT);
            above.pop_back();
        }
        item = next;
    }
    return lines;
}

void TreeControl::ExpandAll() const {
    // Opening an item brings new ones, so until nothing is left to open.
    std::vector<HTREEITEM> tried;
    for (bool again = true; again;) {
        again = false;
        for (const TreeLine& line : Lines()) {
            if (line.expanded || std::find(tried.begin(), tried.end(), line.item) != tried.end()) continue;
            tried.push_back(line.item);
            window_.Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(line.item));
            again = true;
        }
    }
}

TreeLine TreeControl::Line(HTREEITEM item) const {
    int depth = 0;
    for (HTREEITEM above = item; (above = Next(above, TVGN_PARENT)) != nullptr;)
        ++depth;
    return LineOf(item, depth);
}

std::wstring TreeControl::Outline(bool withSelection) const {
    std::wstring text;
    for (const TreeLine& line : Lines()) {
        text += std::wstring(2 * static_cast<std::size_t>(line.depth), L' ') + line.text + L" [" +
                PictureKey(line.image) + L"]";
        // An item without children may keep the state of having been opened.
        if (line.expanded && Next(line.item, TVGN_CHILD) != nullptr) text += L" open";
        if (line.selected && withSelection) text += L" selected";
        text += L"\n";
    }
    return text;
}

HTREEITEM TreeControl::Find(std::wstring_view path) const {
    HTREEITEM item = nullptr;
    HTREEITEM next = Next(nullptr, TVGN_ROOT);
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(L'\\', start), path.size());
        const std::wstring_view name = path.substr(start, end - start);
        item = next;
        while (item != nullptr && LineOf(item, 0).text != name)
            item = Next(item, TVGN_NEXT);
        if (item == nullptr) throw DriverError("the tree has no item " + Utf8(path));
        start = end + 1;
        if (start <= path.size()) {
            window_.Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
            next = Next(item, TVGN_CHILD);
        }
    }
    return item;
}

void TreeControl::Select(std::wstring_view path) const {
    Select(Find(path));
}

void TreeControl::Select(HTREEITEM item) const {
    window_.Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    if (Next(nullptr, TVGN_CARET) != item) throw DriverError("the tree does not select the item");
}

void TreeControl::Expand(std::wstring_view path, bool open) const {
    window_.Send(TVM_EXPAND, open ? TVE_EXPAND : TVE_COLLAPSE, reinterpret_cast<LPARAM>(Find(path)));
}

std::wstring TreeControl::SelectedPath() const {
    std::wstring path;
    for (HTREEITEM item = Next(nullptr, TVGN_CARET); item != nullptr; item = Next(item, TVGN_PARENT)) {
        const std::wstring name = LineOf(item, 0).text;
        path = path.empty() ? name : name + L"\\" + path;
    }
    return path;
}

POINT TreeControl::PlaceOf(std::wstring_view path) const {
    HTREEITEM item = Find(path);
    window_.Send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    // The rectangle's first bytes name the item that is asked for.
    RemoteMemory memory(window_, sizeof(RECT));
    memory.Put(item);
    if (window_.Send(TVM_GETITEMRECT, TRUE, memory.Parameter()) == 0) {
        throw DriverError(Utf8(path) + " is not in sight");
    }
    return OnScreen(window_, Middle(memory.Get<RECT>()));
}

int ListControl::Count() const {
    return static_cast<int>(window_.Send(LVM_GETITEMCOUNT));
}

std::vector<std::wstring> ListControl::Row(int index) const {
    const Window header(reinterpret_cast<HWND>(window_.Send(LVM_GETHEADER)));
    const int columns = header ? std::max(1, static_cast<int>(header.Send(HDM_GETITEMCOUNT))) : 1;
    RemoteMemory memory(window_, sizeof(LVITEMW) + kMaxText * sizeof(wchar_t));
    std::vector<std::wstring> texts;
    for (int column = 0; column < columns; ++column) {
        LVITEMW question{};
        question.iSubItem = column;
        question.pszText = reinterpret_cast<wchar_t*>(static_cast<char*>(memory.Address()) + sizeof(LVITEMW));
        question.cchTextMax = static_cast<int>(kMaxText);
        memory.Put(question);
        const LRESULT length = window_.Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(index), memory.Parameter());
        texts.push_back(length > 0 ? memory.GetText(sizeof(LVITEMW), kMaxText) : std::wstring());
    }
    return texts;
}

int ListControl::Image(int index) const {
    RemoteMemory memory(window_, sizeof(LVITEMW));
    LVITEMW question{};
    question.mask = LVIF_IMAGE;
    question.iItem = index;
    memory.Put(question);
    if (window_.Send(LVM_GETITEMW, 0, memory.Parameter()) == 0) return -1;
    return memory.Get<LVITEMW>().iImage;
}

std::vector<std::wstring> ListControl::Headings() const {
    std::vector<std::wstring> headings;
    const Window header(reinterpret_cast<HWND>(window_.Send(LVM_GETHEADER)));
    const int columns = header ? static_cast<int>(header.Send(HDM_GETITEMCOUNT)) : 0;
    for (int column = 0; column < columns; ++column) {
        RemoteMemory memory(header, sizeof(HDITEMW) + kMaxText * sizeof(wchar_t));
        HDITEMW question{};
        question.mask = HDI_TEXT;
        question.pszText = reinterpret_cast<wchar_t*>(static_cast<char*>(memory.Address()) + sizeof(HDITEMW));
        question.cchTextMax = static_cast<int>(kMaxText);
        memory.Put(question);
        header.Send(HDM_GETITEMW, static_cast<WPARAM>(column), memory.Parameter());
        headings.push_back(memory.GetText(sizeof(HDITEMW), kMaxText));
    }
    return headings;
}

int ListControl::Mode() const {
    return static_cast<int>(window_.Send(LVM_GETVIEW));
}

std::wstring ListControl::Outline() const {
    std::wstring text;
    for (int row = 0; row < Count(); ++row)
        text += L"[" + PictureKey(Image(row)) + L"] " + Joined(Row(row)) + L"\n";
    return text;
}

std::vector<std::wstring> ListControl::Names() const {
    std::vector<std::wstring> names;
    for (int row = 0; row < Count(); ++row)
        names.push_back(Row(row).front());
    return names;
}

POINT ListControl::PlaceOf(int index) const {
    window_.Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), FALSE);
    return OnScreen(window_,
                    Middle(RectangleBy(window_, LVM_GETITEMRECT, static_cast<WPARAM>(index), LVIR_LABEL)));
}

std::vector<std::wstring> ToolBarControl::Texts() const {
    std::vector<std::wstring> texts;
    const LRESULT count = window_.Send(TB_BUTTONCOUNT);
    RemoteMemory memory(window_, sizeof(TBBUTTON) + kMaxText * sizeof(wchar_t));
    for (LRESULT place = 0; place < count; ++place) {
        window_.Send(TB_GETBUTTON, static_cast<WPARAM>(place), memory.Parameter());
        const auto button = memory.Get<TBBUTTON>();
        if (button.fsStyle & BTNS_SEP) continue;
        const auto text = memory.Parameter() + static_cast<LPARAM>(sizeof(TBBUTTON));
        const LRESULT length = window_.Send(TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand), text);
        texts.push_back(length > 0 ? memory.GetText(sizeof(TBBUTTON), kMaxText) : L"");
    }
    return texts;
}

bool ToolBarControl::Enabled(int button) const {
    return window_.Send(TB_ISBUTTONENABLED, static_cast<WPARAM>(button)) != 0;
}

bool ToolBarControl::Pressed(int button) const {
    return window_.Send(TB_ISBUTTONCHECKED, static_cast<WPARAM>(button)) != 0;
}

POINT ToolBarControl::Middle(int button) const {
    return ::Middle(RectangleBy(window_, TB_GETRECT, static_cast<WPARAM>(button)));
}

POINT ToolBarControl::PlaceOf(int button) const {
    return OnScreen(window_, Middle(button));
}

void ToolBarControl::Click(int button) const {
    const POINT place = Middle(button);
    const LPARAM where = MAKELPARAM(place.x, place.y);
    window_.Post(WM_MOUSEMOVE, 0, where);
    window_.Post(WM_LBUTTONDOWN, MK_LBUTTON, where);
    window_.Post(WM_LBUTTONUP, 0, where);
}

std::vector<std::wstring> StatusBarControl::Panels() const {
    std::vector<std::wstring> panels;
    const LRESULT count = window_.Send(SB_GETPARTS);
    for (LRESULT panel = 0; panel < count; ++panel) {
        const LRESULT length = LOWORD(window_.Send(SB_GETTEXTLENGTHW, static_cast<WPARAM>(panel)));
        const std::size_t room = static_cast<std::size_t>(length) + 1;
        RemoteMemory memory(window_, room * sizeof(wchar_t));
        window_.Send(SB_GETTEXTW, static_cast<WPARAM>(panel), memory.Parameter());
        panels.push_back(memory.GetText(0, room));
    }
    return panels;
}

std::wstring StatusBarControl::Text() const {
    std::vector<std::wstring> panels = Panels();
    std::erase(panels, std::wstring());
    return Joined(panels);
}

std::vector<std::wstring> TabControl::Names() const {
    std::vector<std::wstring> names;
    const LRESULT count = window_.Send(TCM_GETITEMCOUNT);
    for (LRESULT tab = 0; tab < count; ++tab) {
        RemoteMemory memory(window_, sizeof(TCITEMW) + kMaxText * sizeof(wchar_t));
        TCITEMW question{};
        question.mask = TCIF_TEXT;
        question.pszText = reinterpret_cast<wchar_t*>(static_cast<char*>(memory.Address()) + sizeof(TCITEMW));
        question.cchTextMax = static_cast<int>(kMaxText);
        memory.Put(question);
        window_.Send(TCM_GETITEMW, static_cast<WPARAM>(tab), memory.Parameter());
        names.push_back(memory.GetText(sizeof(TCITEMW), kMaxText));
    }
    return names;
}

int TabControl::Selected() const {
    return static_cast<int>(window_.Send(TCM_GETCURSEL));
}

void TabControl::Select(int tab) const {
    window_.Send(TCM_SETCURFOCUS, static_cast<WPARAM>(tab));
}

std::vector<std::wstring> ListBoxLines(Window listBox) {
    return LinesBy(listBox, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

std::vector<std::wstring> ComboBoxLines(Window comboBox) {
    return LinesBy(comboBox, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}
