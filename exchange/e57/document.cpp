#include "exchange/e57/document.h"

#include "exchange/e57/xml.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>

namespace tarvo::exchange::e57 {

namespace {

constexpr std::uint64_t maximumXml = 32u << 20;  // bytes
constexpr std::size_t maximumFields = 256;       // of a scan

class Reader {
public:
    explicit Reader(PagedFile& file) : m_file(file) {}

    Document read() {
        if (m_file.xmlLength() > maximumXml) {
            m_file.fail("its XML section takes " + std::to_string(m_file.xmlLength()) +
                        " bytes, more than " + std::to_string(maximumXml));
        }
        std::string text(m_file.xmlLength(), '\0');
        m_file.read(m_file.xmlOffset(), text.data(), text.size(), "XML section");
        pugi::xml_document xml;
        parseXml(xml, text, m_file.fileName());
        const pugi::xml_node root = xml.child("e57Root");
        if (!root) {
            m_file.fail("its XML section is not one of an E57 file");
        }
        Document document;
        document.coordinateSystem = root.child("coordinateMetadata").child_value();
        for (const pugi::xml_node& node : root.child("data3D").children()) {
            if (node.type() == pugi::node_element) {
                document.scans.push_back(scanOf(node));
            }
        }
        for (const pugi::xml_node& node : root.child("images2D").children()) {
            document.imageCount += node.type() == pugi::node_element ? 1 : 0;
        }
        document.scansJson = jsonOf(root.child("data3D"), true);
        pugi::xml_node(root).remove_child("data3D");
        document.fileJson = jsonOf(root, false);
        return document;
    }

private:
    double real(const pugi::xml_node& node) const { return realOf(node, m_file.fileName()); }

    Scan scanOf(const pugi::xml_node& node) {
        Scan scan;
        const pugi::xml_node points = node.child("points");
        if (!points) {
            return scan;
        }
        if (std::string_view(points.attribute("type").value()) != "CompressedVector") {
            m_file.fail("the points of a scan are no compressed vector");
        }
        scan.offset = countOf(points.attribute("fileOffset"), m_file.fileName());
        scan.recordCount = countOf(points.attribute("recordCount"), m_file.fileName());
        refuseCodecs(points.child("codecs"));
        for (const pugi::xml_node& field : points.child("prototype").children()) {
            if (field.type() == pugi::node_element) {
                scan.fields.push_back(fieldOf(field));
                if (scan.fields.size() > maximumFields) {
                    m_file.fail("the points of a scan have more than " +
                                std::to_string(maximumFields) + " fields");
                }
            }
        }
        if (const pugi::xml_node pose = node.child("pose")) {
            scan.pose = poseOf(pose);
        }
        if (const pugi::xml_node limits = node.child("colorLimits")) {
            const char* const names[3][2] = {{"colorRedMinimum", "colorRedMaximum"},
                                             {"colorGreenMinimum", "colorGreenMaximum"},
                                             {"colorBlueMinimum", "colorBlueMaximum"}};
            for (std::size_t i = 0; i < 3; ++i) {
                if (limits.child(names[i][1])) {
                    scan.colourLimits[i] = {real(limits.child(names[i][0])),
                                            real(limits.child(names[i][1]))};
                }
            }
        }
        return scan;
    }

    // Each names the fields that it packs; no list means bit packing.
    void refuseCodecs(const pugi::xml_node& codecs) const {
        for (const pugi::xml_node& codec : codecs.children()) {
            if (codec.type() != pugi::node_element || codec.child("bitPackCodec")) {
                continue;
            }
            std::string name;
            for (const pugi::xml_node& node : codec.children()) {
                name = std::string_view(node.name()) == "inputs" ? name : node.name();
            }
            throw core::Failure(
                "The points of the E57 file \"" + m_file.fileName() +
                    "\" are packed by the codec \"" + validUtf8(name) + "\", which can't be read.",
                "Save them from the program that wrote them as E57 without a codec, "
                "or in another format.");
        }
    }

    Field fieldOf(const pugi::xml_node& node) const {
        Field field;
        field.name = node.name();
        const std::string_view type = node.attribute("type").value();
        if (type == "Integer" || type == "ScaledInteger") {
            field.kind = type == "Integer" ? Field::Kind::Integer : Field::Kind::Scaled;
            field.minimum = wholeOf(node.attribute("minimum"), field.minimum, m_file.fileName());
            field.maximum = wholeOf(node.attribute("maximum"), field.maximum, m_file.fileName());
            if (field.minimum > field.maximum) {
                m_file.fail("\"" + validUtf8(field.name) + "\" has a maximum below its minimum");
            }
            field.scale = realOf(node.attribute("scale"), 1, m_file.fileName());
            field.offset = realOf(node.attribute("offset"), 0, m_file.fileName());
            if (field.scale == 0) {
                m_file.fail("\"" + validUtf8(field.name) + "\" has the scale 0");
            }
        } else if (type == "Float") {
            field.kind = std::string_view(node.attribute("precision").value()) == "single"
                             ? Field::Kind::Single
                             : Field::Kind::Double;
        } else if (type == "String") {
            field.kind = Field::Kind::Text;
        } else {
            m_file.fail("\"" + validUtf8(field.name) + "\" of a scan's points is a \"" +
                        validUtf8(std::string(type)) + "\"");
        }
        return field;
    }

    Pose poseOf(const pugi::xml_node& node) const {
        Pose pose;
        if (const pugi::xml_node rotation = node.child("rotation")) {
            double w = real(rotation.child("w"));
            double x = real(rotation.child("x"));
            double y = real(rotation.child("y"));
            double z = real(rotation.child("z"));
            const double length = std::sqrt(w * w + x * x + y * y + z * z);
            if (!(length > 1e-6) || !std::isfinite(length)) {
                m_file.fail("the rotation of a scan has no direction");
            }
            if (x != 0 || y != 0 || z != 0) {
                w /= length;
                x /= length;
                y /= length;
                z /= length;
                pose.rotation = {
                    {{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)},
                     {2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)},
                     {2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)}}};
            }
        }
        if (const pugi::xml_node translation = node.child("translation")) {
            pose.translation = {real(translation.child("x")), real(translation.child("y")),
                                real(translation.child("z"))};
        }
        return pose;
    }

    PagedFile& m_file;
};

}  // namespace

unsigned Field::bits() const {
    switch (kind) {
        case Kind::Integer:
        case Kind::Scaled:
            return static_cast<unsigned>(std::bit_width(static_cast<std::uint64_t>(maximum) -
                                                        static_cast<std::uint64_t>(minimum)));
        case Kind::Single:
            return 32;
        case Kind::Double:
            return 64;
        case Kind::Text:
            break;
    }
    return 0;
}

std::optional<std::size_t> Scan::find(const char* name) const {
    const auto found = std::ranges::find(fields, name, &Field::name);
    return found == fields.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(found - fields.begin()));
}

Document readDocument(PagedFile& file) {
    return Reader(file).read();
}

}  // namespace tarvo::exchange::e57
