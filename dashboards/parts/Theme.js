.pragma library

// The palette and fonts of all parts. A shipped dashboard gets its own look from a Theme.js of its
// own in its folder Gauges, which replaces this one; it must define the same names.

// Text, from values down to what is off or unknown.
var ink = "#f1f4f6"
var muted = "#98a2ad"
var faint = "#6d7680"
var ghost = "#2c333b"

// Surfaces.
var faceTop = "#1e242a"
var faceMiddle = "#11151a"
var faceBottom = "#0b0e11"
var metal = "#343b42"
var metalDark = "#15191d"
var night = "#060709"
var bezelBright = "#8d969f"
var bezelDark = "#2b3138"
var bezelEdge = "#040506"

// Meanings.
var accent = "#ff6a2b"
var good = "#43d17a"
var caution = "#ffb321"
var danger = "#e62f3b"
var flash = "#3d9bff"
var cold = "#4ea3ff"

// Session flags, and text on bright surfaces.
var black = "#050505"
var white = "#ffffff"
var yellow = "#ffd21a"
var blue = "#1f5fe0"
var blueRim = "#5c8ff5"
var inkOnBright = "#101010"

var labelSize = 11
var fontFamily = "Roboto Condensed"
var fontFiles = ["fonts/RobotoCondensed-Regular.ttf", "fonts/RobotoCondensed-Bold.ttf"]
var kerning = true
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
