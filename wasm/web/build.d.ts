// What the build puts beside the Worker's own files.

declare module "*/module.js" {
  const createPhp: import("./php").CreateGlue;
  export default createPhp;
}

declare module "*/image.json" {
  const image: Record<string, string>;
  export default image;
}
