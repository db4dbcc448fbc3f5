#include "input/commands/page_help.h"

#include <array>

namespace quillet {
namespace {

constexpr PageHelpLine kListsHelp[] = {
    {u"上下移動，打開，回上一層", u"↑↓、→ 或 Enter、←"},
    {u"翻頁，到開頭，到結尾", u"Page Up、Page Down、Home、End"},
    {u"看名單上的描述；很快按兩次也看名單隱藏的內容", u"Tab"},
    {u"站台自己的 Tab", u"`"},
    {u"站台的其他按鍵照常", u"字母、數字、Ctrl+字母"},
};
constexpr PageHelpLine kArticleHelp[] = {
    {u"往下一頁；在最後一頁到下一篇", u"空白鍵、→"},
    {u"往下一頁", u"Page Down"},
    {u"往上一頁", u"Page Up、Ctrl+B"},
    {u"往上一頁；在第一頁到上一篇", u"Backspace"},
    {u"往下一行、往上一行；在頭尾換文章", u"↓ j Enter、↑ k"},
    {u"到開頭", u"Home、0"},
    {u"到結尾", u"End、$、G"},
    {u"在文章中尋找，下一處，上一處", u"/、n、N"},
    {u"同主題的上一篇、下一篇", u"[、]"},
    {u"離開文章", u"←"},
};
constexpr PageHelpLine kViewerHelp[] = {
    {u"上一張、下一張", u"←、→、Page Up、Page Down"},
    {u"實際大小，再按回到符合視窗", u"空白鍵、點兩下"},
    {u"放大、縮小、符合視窗", u"+、-、0、滾輪"},
    {u"另存圖片，複製圖片", u"Ctrl+S、Ctrl+C"},
    {u"回到文章", u"Esc、q、點圖片旁邊"},
};
constexpr PageHelpLine kWritingHelp[] = {
    {u"貼上", u"Ctrl+V"},
    {u"複製選取的文字（沒有選取時送給站台）", u"Ctrl+C"},
    {u"存檔或放棄（站台的按鍵）", u"Ctrl+X"},
    {u"站台的其他按鍵照常", u"Ctrl+A 到 Ctrl+Z"},
};
constexpr PageHelpLine kSelectingHelp[] = {
    {u"從游標或第一行開始選取", u"Shift+方向鍵、Shift+Home、Shift+End"},
    {u"取消選取", u"Esc"},
    {u"選一個詞，選一行", u"滑鼠點兩下、點三下"},
    {u"選一塊長方形，延長選取", u"Alt+拖曳、Shift+點一下"},
};
constexpr PageHelpLine kMouseHelp[] = {
    {u"打開清單的一行、選單的一項、連結", u"左鍵"},
    {u"回上一層", u"左鍵點左邊的空白"},
    {u"捲動文章，清單翻頁", u"滾輪"},
    {u"放大、縮小畫面", u"Ctrl+滾輪"},
    {u"同主題的文章", u"左鍵+滾輪、側鍵"},
    {u"選取文字、連結、使用者能做的事", u"右鍵"},
    {u"每個動作都可以改", u"選項的「滑鼠控制」"},
};
constexpr PageHelpLine kNamesHelp[] = {
    {u"改滑鼠下 id 在名單中的記號（要開啟「啟用id黑白名單快捷鍵」）", u"`、0 到 7、u、~"},
};
constexpr PageHelpLine kLineHelp[] = {
    {u"再連線一次", u"Enter；斷線後任何按鍵"},
    {u"停止自動重新連線、停止登入", u"Esc"},
};

constexpr std::array kHelpOfPages{
    PageHelp{u"按鍵：選單與文章列表", kListsHelp}, PageHelp{u"按鍵：讀文章（整篇顯示時）", kArticleHelp},
    PageHelp{u"按鍵：看圖", kViewerHelp},          PageHelp{u"按鍵：寫文章", kWritingHelp},
    PageHelp{u"選取文字", kSelectingHelp},         PageHelp{u"滑鼠", kMouseHelp},
    PageHelp{u"按鍵：id 上面", kNamesHelp},        PageHelp{u"按鍵：沒有連線時", kLineHelp},
};

}  // namespace

std::span<const PageHelp> HelpOfPages() {
  return kHelpOfPages;
}

}  // namespace quillet
