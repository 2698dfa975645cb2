#include "engine/reports/page_names.h"

#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

std::string number_of(int n) {
    return n == 0 ? "" : numtext(n);
}

}  // namespace

std::string page_template(int n) {
    return "myhtml" + number_of(n) + ".html";
}

std::string page_work_file(int n) {
    return "temphtml" + number_of(n) + ".html";
}

std::string finished_page(int n) {
    return "nbyxauto" + number_of(n) + ".html";
}

std::optional<std::string> remote_page(std::string_view FTPRemoteFile, int n) {
    const std::string name = trimmed(FTPRemoteFile);
    const std::size_t dot = name.find('.');
    if (dot == std::string::npos) return std::nullopt;
    const std::string ending = name.substr(dot + 1);
    return name.substr(0, dot) + number_of(n) + "." + ending.substr(0, ending.find('.'));
}

}  // namespace nimbry
