#include "platform/curl_handle.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace nimbry::platform {

CurlHandle::CurlHandle(std::function<bool()> broken_off, OpenSockets& sockets, const std::string& certificates)
    : broken_off_(std::move(broken_off)), sockets_(sockets), connections_(curl_multi_init()), curl_(curl_easy_init()) {
    if (connections_ == nullptr || curl_ == nullptr) throw std::bad_alloc();
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFOFUNCTION, &CurlHandle::progress);
    set(CURLOPT_XFERINFODATA, this);
    set(CURLOPT_OPENSOCKETFUNCTION, &CurlHandle::open_socket);
    set(CURLOPT_OPENSOCKETDATA, this);
    set(CURLOPT_CLOSESOCKETFUNCTION, &CurlHandle::close_socket);
    set(CURLOPT_CLOSESOCKETDATA, &sockets_);
    // A look-up that nobody waits for any more must not hold up the end of the program.
    set(CURLOPT_QUICK_EXIT, 1L);
    if (!certificates.empty()) set(CURLOPT_CAINFO, certificates);
}

void CurlHandle::listen(std::function<void(bool ours, std::string line)> heard) {
    heard_ = std::move(heard);
    set(CURLOPT_VERBOSE, 1L);
    set(CURLOPT_DEBUGFUNCTION, &CurlHandle::debug);
    set(CURLOPT_DEBUGDATA, this);
}

// Not curl_easy_perform(): where a server answers EPSV at once, libcurl has no socket to wait for until it is called
// again, and that call waits its whole second for nothing, at every such file.
CURLcode CurlHandle::perform() {
    curl_multi_add_handle(connections_.get(), get());
    int running = 0;
    CURLMcode ran = curl_multi_perform(connections_.get(), &running);
    while (ran == CURLM_OK && running > 0) {
        wait_for_sockets();
        ran = curl_multi_perform(connections_.get(), &running);
    }
    CURLcode verdict = CURLE_OUT_OF_MEMORY;
    int more = 0;
    while (const CURLMsg* const message = curl_multi_info_read(connections_.get(), &more))
        if (message->msg == CURLMSG_DONE) verdict = message->data.result;
    curl_multi_remove_handle(connections_.get(), get());
    return verdict;
}

void CurlHandle::wait_for_sockets() {
    constexpr int look_for_a_break_ms = 1000, next_step_ms = 1;
    fd_set in, out, faults;
    FD_ZERO(&in);
    FD_ZERO(&out);
    FD_ZERO(&faults);
    int highest = -1;
    curl_multi_fdset(connections_.get(), &in, &out, &faults, &highest);
    curl_multi_poll(connections_.get(), nullptr, 0, highest < 0 ? next_step_ms : look_for_a_break_ms, nullptr);
}

long CurlHandle::number(CURLINFO what) const {
    long value = 0;
    curl_easy_getinfo(get(), what, &value);
    return value;
}

curl_socket_t CurlHandle::open_socket(void* self, curlsocktype, curl_sockaddr* address) {
    const CurlHandle& curl = *static_cast<CurlHandle*>(self);
    return curl.refused_ && curl.refused_(*address) ? CURL_SOCKET_BAD : curl.sockets_.open(*address);
}

int CurlHandle::close_socket(void* sockets, curl_socket_t socket) {
    return static_cast<OpenSockets*>(sockets)->close(socket);
}

int CurlHandle::progress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    return static_cast<CurlHandle*>(self)->broken_off_() ? 1 : 0;
}

int CurlHandle::debug(CURL*, curl_infotype type, char* data, std::size_t size, void* self) {
    const bool ours = type == CURLINFO_HEADER_OUT;
    if (!ours && type != CURLINFO_HEADER_IN) return 0;
    std::string_view lines(data, size);
    while (!lines.empty()) {
        const std::size_t end = lines.find('\n');
        std::string line(lines.substr(0, end));
        if (line.ends_with('\r')) line.pop_back();
        static_cast<CurlHandle*>(self)->heard_(ours, ours ? masked(line) : std::move(line));
        if (end == std::string_view::npos) break;
        lines.remove_prefix(end + 1);
    }
    return 0;
}

std::string masked(const std::string& command) {
    constexpr std::string_view word = "PASS ";
    const bool password = command.size() >= word.size() &&
                          std::equal(word.begin(), word.end(), command.begin(),
                                     [](char a, char b) { return a == std::toupper(static_cast<unsigned char>(b)); });
    return password ? "PASS ****" : command;
}

int reply_code(const std::string& line) {
    constexpr std::size_t digits = 3;
    if (line.size() < digits) return 0;
    int code = 0;
    for (const char c : line.substr(0, digits)) {
        if (c < '0' || c > '9') return 0;
        code = code * 10 + (c - '0');
    }
    return line.size() == digits || line[digits] == ' ' || line[digits] == '-' ? code : 0;
}

std::string fault_text(CURLcode code, const std::string& last_reply) {
    constexpr int first_refusal = 400;
    return reply_code(last_reply) >= first_refusal ? last_reply : curl_easy_strerror(code);
}

}  // namespace nimbry::platform
