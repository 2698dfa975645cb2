#include "platform/curl_mail.h"

#include <QDateTime>
#include <QSysInfo>
#include <QUuid>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

#include "platform/curl_handle.h"
#include "platform/mail_message.h"
#include "platform/mailbox.h"
#include "platform/transfer_urls.h"

namespace nimbry::platform {
namespace {

using Place = Mailbox<Mail, std::string>;

std::string this_machine() {
    const std::string name = QSysInfo::machineHostName().toStdString();
    return name.empty() ? "localhost" : name;
}

MessageStamp stamp_now() {
    return {.date = QDateTime::currentDateTime().toString(Qt::RFC2822Date).toStdString(),
            .id = QUuid::createUuid().toString(QUuid::Id128).toStdString() + "@" + this_machine()};
}

std::vector<AttachedFile> read_all(const std::vector<MailAttachment>& attachments) {
    std::vector<AttachedFile> files;
    for (const MailAttachment& attachment : attachments) {
        std::ifstream file(attachment.path, std::ios::binary);
        if (!file) continue;
        files.push_back({attachment.name, {std::istreambuf_iterator<char>(file), {}}});
    }
    return files;
}

struct Unsent {
    std::string message;
    std::size_t at = 0;
};

std::size_t read(char* buffer, std::size_t size, std::size_t count, void* unsent) {
    Unsent& rest = *static_cast<Unsent*>(unsent);
    const std::size_t bytes = rest.message.copy(buffer, size * count, rest.at);
    rest.at += bytes;
    return bytes;
}

std::unique_ptr<curl_slist, CurlCleanup> recipients(const Mail& mail) {
    curl_slist* list = nullptr;
    for (const auto* group : {&mail.to, &mail.cc, &mail.bcc}) {
        for (const std::string& address : *group) list = curl_slist_append(list, ("<" + address + ">").c_str());
    }
    return std::unique_ptr<curl_slist, CurlCleanup>(list);
}

/// Why it failed; empty when the server has taken it.
std::string deliver(const Mail& mail, CurlHandle& curl) {
    Unsent unsent{mail_message(mail, read_all(mail.attachments), stamp_now())};
    std::string last_reply;
    bool leaving = false;
    const auto to_all = recipients(mail);
    curl.listen([&](bool ours, std::string line) {
        leaving = leaving || (ours && line == "QUIT");
        if (!ours && !leaving) last_reply = std::move(line);
    });
    curl.set(CURLOPT_URL, mail_url(mail, this_machine()));
    curl.set(CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    curl.set(CURLOPT_PROXY, "");
    if (mail.encryption != Encryption::none) curl.set(CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    if (!mail.user.empty()) {
        curl.set(CURLOPT_USERNAME, mail.user);
        curl.set(CURLOPT_PASSWORD, mail.password);
    }
    curl.set(CURLOPT_MAIL_FROM, "<" + mail.from + ">");
    curl.set(CURLOPT_MAIL_RCPT, to_all.get());
    curl.set(CURLOPT_UPLOAD, 1L);
    curl.set(CURLOPT_READFUNCTION, &read);
    curl.set(CURLOPT_READDATA, &unsent);
    curl.set(CURLOPT_TIMEOUT_MS, static_cast<long>(mail.limit.count()));
    const CURLcode code = curl.perform();
    if (code == CURLE_OK) return {};
    return code == CURLE_OPERATION_TIMEDOUT ? "Timed out" : fault_text(code, last_reply);
}

class CurlMailDelivery : public MailDelivery {
public:
    CurlMailDelivery(WorkThreads& threads, const Mail& mail, const std::string& certificates)
        : place_(std::make_shared<Place>(threads.bell())) {
        place_->begin(mail);
        threads.start([place = place_, certificates] {
            CurlHandle curl([place] { return place->given_up(); }, place->sockets(), certificates);
            if (const auto step = place->next()) place->finish(deliver(*step, curl));
        });
    }
    ~CurlMailDelivery() override { place_->give_up(); }
    CurlMailDelivery(const CurlMailDelivery&) = delete;
    CurlMailDelivery& operator=(const CurlMailDelivery&) = delete;

    [[nodiscard]] bool under_way() const override { return place_->under_way(); }
    [[nodiscard]] std::string fault() const override { return place_->end(); }

private:
    std::shared_ptr<Place> place_;
};

}  // namespace

std::unique_ptr<MailDelivery> curl_mail(WorkThreads& threads, const Mail& mail, const std::string& certificates) {
    return std::make_unique<CurlMailDelivery>(threads, mail, certificates);
}

}  // namespace nimbry::platform
