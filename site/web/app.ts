// The part of the site that has editors in it: the playground, and examples of the manual that are edited.

import { editExample } from "./editor/example";
import { startPlayground } from "./playground/main";

window.editExample = editExample;
if (document.body.classList.contains("playground")) {
  startPlayground();
}
