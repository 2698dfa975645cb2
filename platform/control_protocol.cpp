#include "platform/control_protocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <utility>

namespace nimbry::platform {

namespace {

using Kind = AnswerPiece::Kind;

constexpr std::array kTextPieces{
    std::pair{Kind::out, "out"},
    std::pair{Kind::err, "err"},
    std::pair{Kind::screen, "screen"},
};

QByteArray line_of(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QJsonObject object_of(const QByteArray& line) {
    return QJsonDocument::fromJson(line).object();
}

}  // namespace

QByteArray request_line(const std::vector<std::string>& arguments) {
    QJsonArray list;
    for (const std::string& argument : arguments) list.append(QString::fromStdString(argument));
    return line_of({{"arguments", list}});
}

std::optional<std::vector<std::string>> parse_request(const QByteArray& line) {
    const QJsonValue list = object_of(line).value("arguments");
    if (!list.isArray()) return std::nullopt;
    std::vector<std::string> arguments;
    for (const QJsonValue argument : list.toArray()) {
        if (!argument.isString()) return std::nullopt;
        arguments.push_back(argument.toString().toStdString());
    }
    return arguments;
}

QByteArray answer_line(const AnswerPiece& piece) {
    for (const auto& [kind, name] : kTextPieces) {
        if (piece.kind == kind) return line_of({{name, QString::fromStdString(piece.text)}});
    }
    return line_of({{"status", piece.status}});
}

std::optional<AnswerPiece> parse_answer(const QByteArray& line) {
    const QJsonObject object = object_of(line);
    for (const auto& [kind, name] : kTextPieces) {
        if (const QJsonValue text = object.value(name); text.isString()) {
            return AnswerPiece{kind, text.toString().toStdString(), 0};
        }
    }
    const QJsonValue status = object.value("status");
    if (!status.isDouble()) return std::nullopt;
    return AnswerPiece{Kind::status, "", status.toInt()};
}

}  // namespace nimbry::platform
