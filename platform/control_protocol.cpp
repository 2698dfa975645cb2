#include "platform/control_protocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <utility>

namespace nimbry::platform {

namespace {

using Kind = AnswerPiece::Kind;

constexpr std::array text_pieces{
    std::pair{Kind::out, "out"},
    std::pair{Kind::err, "err"},
};

QByteArray line_of(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QJsonObject object_of(const QByteArray& line) {
    return QJsonDocument::fromJson(line).object();
}

QJsonArray list_of(const std::vector<std::string>& texts) {
    QJsonArray list;
    for (const std::string& text : texts) list.append(QString::fromStdString(text));
    return list;
}

/// The texts of a list; nothing when it is none, or holds anything else.
std::optional<std::vector<std::string>> texts_of(const QJsonValue& list) {
    if (!list.isArray()) return std::nullopt;
    std::vector<std::string> texts;
    for (const QJsonValue text : list.toArray()) {
        if (!text.isString()) return std::nullopt;
        texts.push_back(text.toString().toStdString());
    }
    return texts;
}

}  // namespace

QByteArray request_line(const std::vector<std::string>& arguments) {
    return line_of({{"arguments", list_of(arguments)}});
}

std::optional<std::vector<std::string>> parse_request(const QByteArray& line) {
    return texts_of(object_of(line).value("arguments"));
}

QByteArray answer_line(const AnswerPiece& piece) {
    for (const auto& [kind, name] : text_pieces) {
        if (piece.kind == kind) return line_of({{name, QString::fromStdString(piece.text)}});
    }
    if (piece.kind == Kind::screen) return line_of({{"screen", list_of(piece.layouts)}});
    return line_of({{"status", piece.status}});
}

std::optional<AnswerPiece> parse_answer(const QByteArray& line) {
    const QJsonObject object = object_of(line);
    for (const auto& [kind, name] : text_pieces) {
        if (const QJsonValue text = object.value(name); text.isString()) {
            return AnswerPiece{kind, text.toString().toStdString(), 0};
        }
    }
    if (auto layouts = texts_of(object.value("screen")); layouts && !layouts->empty())
        return AnswerPiece{Kind::screen, "", 0, std::move(*layouts)};
    const QJsonValue status = object.value("status");
    if (!status.isDouble()) return std::nullopt;
    return AnswerPiece{Kind::status, "", status.toInt()};
}

}  // namespace nimbry::platform
