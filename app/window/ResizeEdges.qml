pragma ComponentBehavior: Bound

import QtQuick

// The border of a window without one: its edges and corners can be pulled.
Item {
    id: edges

    required property Window frame

    /// The button was pressed on an edge.
    signal pulled()

    readonly property int thickness: 5
    readonly property int corner: 14

    Repeater {
        model: [
            { edges: Qt.LeftEdge, cursor: Qt.SizeHorCursor },
            { edges: Qt.RightEdge, cursor: Qt.SizeHorCursor },
            { edges: Qt.TopEdge, cursor: Qt.SizeVerCursor },
            { edges: Qt.BottomEdge, cursor: Qt.SizeVerCursor },
            { edges: Qt.TopEdge | Qt.LeftEdge, cursor: Qt.SizeFDiagCursor },
            { edges: Qt.BottomEdge | Qt.RightEdge, cursor: Qt.SizeFDiagCursor },
            { edges: Qt.TopEdge | Qt.RightEdge, cursor: Qt.SizeBDiagCursor },
            { edges: Qt.BottomEdge | Qt.LeftEdge, cursor: Qt.SizeBDiagCursor }
        ]

        MouseArea {
            id: edge

            required property var modelData

            readonly property bool isLeft: modelData.edges & Qt.LeftEdge
            readonly property bool isRight: modelData.edges & Qt.RightEdge
            readonly property bool isTop: modelData.edges & Qt.TopEdge
            readonly property bool isBottom: modelData.edges & Qt.BottomEdge
            readonly property bool isCorner: (isLeft || isRight) && (isTop || isBottom)

            x: isRight ? edges.width - width : 0
            y: isBottom ? edges.height - height : 0
            width: isCorner ? edges.corner : isLeft || isRight ? edges.thickness : edges.width
            height: isCorner ? edges.corner : isTop || isBottom ? edges.thickness : edges.height
            cursorShape: modelData.cursor
            onPressed: {
                edges.pulled();
                edges.frame.startSystemResize(edge.modelData.edges);
            }
        }
    }
}
