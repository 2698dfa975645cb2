#include "engine/displays/notice_list.h"

#include <utility>

namespace nimbry {

void NoticeList::add(Notice notice) {
    notices.push_back(std::move(notice));
    if (notices.size() > capacity) notices.pop_front();
}

void NoticeRecorder::balloon(const Balloon& balloon) {
    list_.add({clock_.computer_time(), balloon.title, balloon.text, balloon.icon});
    shown_by_.balloon(balloon);
}

Answer NoticeRecorder::box(const MessageBox& box) {
    list_.add({clock_.computer_time(), box.title, whole_text(box), box.icon});
    return shown_by_.box(box);
}

}  // namespace nimbry
