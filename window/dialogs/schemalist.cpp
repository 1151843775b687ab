#include "window/dialogs/schemalist.h"

#include "catalogue/catalogue.h"
#include "core/json.h"

#include <QComboBox>
#include <QRegularExpression>

namespace tarvo::window {

QMap<QString, QString> fillSchemaList(QComboBox* list) {
    QMap<QString, QString> texts;
    for (const auto& schema : catalogue::schemas()) {
        rapidjson::Document document;
        document.Parse(schema.json.data(), schema.json.size());
        const auto member = [&](const char* name) {
            return document.IsObject() && document.HasMember(name) && document[name].IsString()
                       ? QString::fromUtf8(document[name].GetString())
                       : QString();
        };
        const QString extension = member("extension");
        if (extension.isEmpty())
            continue;
        const QString identifier = member("identifier");
        const QString label =
            extension == identifier ? extension : QString("%0 (%1)").arg(extension, identifier);
        list->addItem(label, extension);
        texts[label] = QString::fromStdString(core::formattedJson(std::string(schema.json)));
    }
    return texts;
}

int schemaFor(const QComboBox* list, const QString& location) {
    int best = -1;
    for (int i = 0; i < list->count(); ++i) {
        const QString extension = list->itemData(i).toString();
        const QString pattern =
            QString(extension).replace("{C}", R"(\d+)").replace("{N}", R"(\d+)");
        const QRegularExpression ends(".*" + pattern + "$",
                                      QRegularExpression::CaseInsensitiveOption);
        if (ends.match(location).hasMatch() &&
            (best < 0 || extension.size() > list->itemData(best).toString().size()))
            best = i;
    }
    return best;
}

}  // namespace tarvo::window
