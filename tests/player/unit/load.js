// The joined player as the program folder holds it (KP_PLAYER_JS names
// another copy), loaded the way Node loads a module: no page, no boot.
const path = require('node:path');
const file = process.env.KP_PLAYER_JS ||
  path.resolve(__dirname, '../../../build/bin/KestrelPane.js');
module.exports = require(file);
