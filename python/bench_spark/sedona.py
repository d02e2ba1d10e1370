# SPDX-License-Identifier: MIT
"""What Apache Sedona has nearest to our measures and joins, in the forms that suit it best."""

from cluster import Settings
from pyspark.sql import DataFrame
from pyspark.sql import functions as F

# The settings that its documentation asks for, beside its package.
SETTINGS: Settings = {
    "spark.serializer": "org.apache.spark.serializer.KryoSerializer",
    "spark.kryo.registrator": "org.apache.sedona.core.serde.SedonaKryoRegistrator",
    "spark.sql.extensions": "org.apache.sedona.sql.SedonaSqlExtensions",
}


def parsed(outlines: DataFrame) -> DataFrame:
    """The outlines with geometry as Sedona keeps it."""
    return outlines.selectExpr("id", "ST_GeomFromWKB(geometry) as g")


def measured(geometries: DataFrame) -> DataFrame:
    """The twelve, of geometry that is parsed; the hull, which two of them need, is found once."""
    return geometries.selectExpr("id", "g", "ST_Area(ST_ConvexHull(g)) as hull_area").selectExpr(
        "id",
        "ST_Area(g) as area",
        "ST_Perimeter(g) as length",
        "ST_X(ST_Centroid(g)) as centre_x",
        "ST_Y(ST_Centroid(g)) as centre_y",
        "ST_XMin(g) as x_min",
        "ST_YMin(g) as y_min",
        "ST_XMax(g) as x_max",
        "ST_YMax(g) as y_max",
        "hull_area",
        "ST_Area(g) / hull_area as solidity",
        "ST_MinimumBoundingRadius(g).radius as circle_radius",
        "ST_IsSimple(g) as is_simple",
    )


def joined(points: DataFrame, regions: DataFrame, broadcast: bool) -> DataFrame:
    """The pairs of points and regions that contain them; regions have parsed geometry."""
    left = points.selectExpr("point", "ST_Point(x, y) as p")
    right = F.broadcast(regions) if broadcast else regions
    return left.join(right, F.expr("ST_Contains(g, p)")).select("point", "id")
