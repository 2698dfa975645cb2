#pragma once

#include <QString>
#include <QWidget>

namespace nimbry::windows {

/// Where the wind comes from: a compass rose (`WindPic`) with a solid needle for the average, a small mark on the rim
/// for the gust, and a word in the middle.
class WindRose : public QWidget {
    Q_OBJECT

public:
    struct Wind {
        int average_degrees = 0;  ///< clockwise from north
        int gust_degrees = 0;
        bool shows_average = false;  ///< false before the first reading, in a calm, and while the reading is faulty
        bool shows_gust = false;
        QString word;  ///< "NE", "Calm", "Error"; empty before the first reading

        bool operator==(const Wind&) const = default;
    };

    explicit WindRose(QWidget* parent = nullptr);

    void show_wind(const Wind& wind);
    [[nodiscard]] const Wind& shown() const { return wind_; }

    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint().expandedTo({200, 200}); }
    /// 168 x 168, and more where the letters are large.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Wind wind_;
};

}  // namespace nimbry::windows
