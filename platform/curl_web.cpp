#include "platform/curl_web.h"

#include <algorithm>
#include <utility>

#include "engine/core/version.h"
#include "platform/curl_handle.h"
#include "platform/mailbox.h"
#include "platform/transfer_urls.h"

namespace nimbry::platform {
namespace {

constexpr long redirects_followed = 5;

struct Request {
    std::string url;
    Milliseconds limit;
};
struct Answer {
    WebReply::End end = WebReply::End::no_connection;
    int status = 0;
    std::string body_start{};
};
using Place = Mailbox<Request, Answer>;

// Once the start of the body is there, the rest is not waited for.
std::size_t keep_start(char* data, std::size_t size, std::size_t count, void* start) {
    std::string& body = *static_cast<std::string*>(start);
    const std::size_t bytes = size * count;
    body.append(data, std::min(bytes, WebReply::body_kept - body.size()));
    return body.size() < WebReply::body_kept ? bytes : CURL_WRITEFUNC_ERROR;
}

WebReply::End end_of(CURLcode code, int status) {
    if (code == CURLE_OPERATION_TIMEDOUT) return WebReply::End::timed_out;
    // A body that broke off, or was broken off, is an answer all the same.
    return status != 0 ? WebReply::End::answered : WebReply::End::no_connection;
}

Answer ask(const Request& request, CurlHandle& curl) {
    Answer answer;
    curl.set(CURLOPT_URL, web_url(request.url));
    curl.set(CURLOPT_PROTOCOLS_STR, "http,https");
    curl.set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl.set(CURLOPT_FOLLOWLOCATION, 1L);
    curl.set(CURLOPT_MAXREDIRS, redirects_followed);
    curl.set(CURLOPT_TIMEOUT_MS, static_cast<long>(request.limit.count()));
    curl.set(CURLOPT_USERAGENT, "Nimbry/" + std::string(program_version));
    curl.set(CURLOPT_WRITEFUNCTION, &keep_start);
    curl.set(CURLOPT_WRITEDATA, &answer.body_start);
    const CURLcode code = curl.perform();
    const int status = static_cast<int>(curl.number(CURLINFO_RESPONSE_CODE));
    answer.end = end_of(code, status);
    if (answer.end == WebReply::End::answered) answer.status = status;
    return answer;
}

class CurlWebReply : public WebReply {
public:
    CurlWebReply(WorkThreads& threads, Request request, const std::string& certificates)
        : place_(std::make_shared<Place>(threads.bell())) {
        place_->begin(std::move(request));
        threads.start([place = place_, certificates] {
            CurlHandle curl([place] { return place->given_up(); }, place->sockets(), certificates);
            if (const auto step = place->next()) place->finish(ask(*step, curl));
        });
    }
    ~CurlWebReply() override { place_->give_up(); }
    CurlWebReply(const CurlWebReply&) = delete;
    CurlWebReply& operator=(const CurlWebReply&) = delete;

    [[nodiscard]] bool under_way() const override { return place_->under_way(); }
    [[nodiscard]] End end() const override { return place_->end().end; }
    [[nodiscard]] int status() const override { return place_->end().status; }
    [[nodiscard]] std::string body_start() const override { return place_->end().body_start; }

private:
    std::shared_ptr<Place> place_;
};

}  // namespace

std::unique_ptr<WebReply> curl_get(WorkThreads& threads, const std::string& url, Milliseconds limit,
                                   const std::string& certificates) {
    return std::make_unique<CurlWebReply>(threads, Request{url, limit}, certificates);
}

}  // namespace nimbry::platform
