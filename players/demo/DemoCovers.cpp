#include "players/demo/DemoCovers.h"

#include "players/demo/GraphicCovers.h"
#include "players/demo/PhotographicCovers.h"
#include "players/demo/PictureEncoding.h"

namespace tarnwick::players {

QByteArray paintCover(DemoCover cover) {
    switch (cover) {
    case DemoCover::None:
        break;
    case DemoCover::Dusk:
        return encodePhotograph(paintDusk());
    case DemoCover::Sea:
        return encodePhotograph(paintSea());
    case DemoCover::Shapes:
        return encodeDrawing(paintShapes());
    case DemoCover::WhiteRoom:
        return encodePhotograph(paintWhiteRoom());
    case DemoCover::Night:
        return encodePhotograph(paintNight());
    case DemoCover::Pier:
        return encodePhotograph(paintPier());
    case DemoCover::Crossing:
        return encodeDrawing(paintCrossing());
    case DemoCover::CityLights:
        return encodePhotograph(paintCityLights());
    case DemoCover::Typography:
        return encodeDrawing(paintTypography());
    case DemoCover::Stripes:
        return encodePhotograph(paintStripes());
    }
    return {};
}

} // namespace tarnwick::players
