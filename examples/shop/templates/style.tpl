<style>
:root { --ink: #2b2622; --soft: #7a6f65; --line: #e6ded3; --paper: #fbf8f3; --hot: #b5502a; font: 15px/1.5 system-ui, sans-serif; color: var(--ink); background: var(--paper) }
* { box-sizing: border-box; margin: 0 }
ul, ol { list-style: none; padding: 0 }
a { color: inherit; text-decoration: none }
a:hover h3, .crumbs a:hover, footer a:hover { text-decoration: underline }
h1, h2, h3, .logo { font-family: "Iowan Old Style", Palatino, Georgia, serif; font-weight: 500 }
h1 { font-size: clamp(2rem, 5vw, 3.2rem); line-height: 1.1 }
button, .button { font: inherit; font-weight: 600; padding: .5em 1.1em; border: 1px solid var(--ink); border-radius: 99px; background: none; color: inherit; cursor: pointer }
button:hover, footer button { background: var(--ink); color: #fff }
button:disabled { background: none !important; color: var(--soft); border-color: var(--line); cursor: default }
input, select { font: inherit; color: inherit; padding: .5em .9em; border: 1px solid var(--line); border-radius: 99px; background: #fff }
main, header, nav[aria-label=Departments] { max-width: 1240px; margin: auto; padding: 0 24px }
.notice { background: var(--ink); color: #f6e9d2; text-align: center; font-size: .85rem; padding: .5em }
header { display: flex; flex-wrap: wrap; align-items: center; gap: 12px 20px; padding-block: 18px }
header form { flex: 1 1 200px }
header input { width: 100% }
.logo { font-size: 1.6rem; display: flex; align-items: center; gap: 8px }
.logo svg { width: 26px; fill: var(--hot) }
.basket b { background: var(--hot); color: #fff; border-radius: 99px; padding: 1px 8px; font-size: .8rem }
nav { display: flex; flex-wrap: wrap; gap: 6px 28px }
nav[aria-label=Departments] { padding-bottom: 14px; border-bottom: 1px solid var(--line) }
nav [aria-current=true] { color: var(--hot); font-weight: 600 }
.crumbs { display: flex; gap: 8px; padding: 16px 0; font-size: .85rem; color: var(--soft) }
.crumbs i { margin-right: 5px }
.hero { display: grid; grid-template-columns: 1fr minmax(0, 420px); align-items: center; background: linear-gradient(100deg, #f3e3cc, #ecd3b7); border-radius: 24px; padding: 20px 44px; overflow: hidden }
.hero .trio { align-self: start; margin-block: -20px }
.hero p { max-width: 46ch; margin-top: 10px }
.trio { display: flex }
.trio svg { flex: 1; min-width: 0; height: auto; margin-inline: -14px }
.bar { display: flex; flex-wrap: wrap; align-items: center; gap: 14px; padding: 20px 0 }
.sort { margin-left: auto }
label.button { display: none }
.columns { align-items: start; display: grid; grid-template-columns: 210px 1fr; gap: 36px }
svg { aspect-ratio: 1 }
.facets { position: sticky; top: 12px }
details { border-top: 1px solid var(--line); padding: 12px 0 }
summary { font-weight: 600; cursor: pointer }
details label { display: flex; align-items: center; gap: 8px; padding: 3px 0 }
label:has(i) { text-transform: capitalize }
label i { width: 16px; height: 16px; border-radius: 50%; box-shadow: inset 0 0 0 1px #0002 }
details input { accent-color: var(--hot) }
details small { color: var(--soft); margin-left: auto }
.grid { display: grid; grid-template-columns: repeat(auto-fill, minmax(180px, 1fr)); grid-auto-flow: dense; gap: 32px 22px }
.card > a { position: relative; display: block }
.card svg { display: block; width: 100%; height: auto; background: var(--t); border-radius: 18px; transition: .3s }
.card:hover svg { filter: brightness(1.03) saturate(1.15) }
.badge { position: absolute; top: 12px; left: 12px; background: #fff; border-radius: 99px; padding: 2px 11px; font-size: .75rem }
.badge::first-letter, .maker::first-letter { text-transform: uppercase }
.sale { background: var(--hot); color: #fff }
.card h3 { font-size: 1.15rem; margin-top: 10px }
.maker { font-size: .85rem; line-height: 1.5rem; color: var(--soft) }
.stars { line-height: 1.5rem }
.stars::before { content: "★★★★★"; letter-spacing: 1px; background: linear-gradient(90deg, #c98a2b calc(var(--r) * 20%), #ddd3c5 0); background-clip: text; -webkit-background-clip: text; color: transparent }
.stars small { color: var(--soft); margin-left: 6px }
.price { font-weight: 650; font-size: 1.05rem; margin: 2px 0 8px }
s { color: var(--soft); font-weight: 400 }
.price small { float: right; color: var(--hot); font-weight: 400 }
.promo { grid-column: 1 / -1; background: #33413a; color: #f3ead9; border-radius: 24px; padding: 32px 40px; display: flex; flex-wrap: wrap; align-items: center; gap: 8px 32px }
.promo p { flex: 1 1 220px }
.promo .button { background: #f3d9a4; color: #33413a; border: 0 }
.pages { justify-content: center; gap: 8px; padding: 40px 0 }
.pages a { padding: 6px 14px; border-radius: 99px }
.pages [aria-current] { background: var(--ink); color: #fff }
.seen { border-top: 1px solid var(--line); padding: 28px 0 44px }
.seen ul { display: flex; gap: 18px; overflow-x: auto; margin-top: 14px }
.seen a { display: flex; align-items: center; gap: 12px; width: 215px }
.seen svg { width: 68px; height: 68px; flex: none; background: var(--t); border-radius: 14px }
footer { background: #efe7db; padding: 44px max(24px, calc(50% - 596px)) 24px; display: grid; grid-template-columns: 2fr repeat(3, 1fr); gap: 32px }
footer h2 { font-size: 1.15rem; margin-bottom: 8px }
footer div a { display: block; padding: 2px 0 }
footer form input { margin: 12px 8px 0 0 }
.legal { grid-column: 1 / -1; font-size: .85rem; color: var(--soft) }
#toast { position: fixed; bottom: 24px; left: 50%; transform: translate(-50%, 90px); background: var(--ink); color: #fff; padding: 12px 24px; border-radius: 99px; transition: .3s }
#toast.shown { transform: translate(-50%) }
.a { fill: var(--a) }
.b { fill: var(--b) }
.g { fill: url(#glow) }
.w { fill: #fff1c9 }
.h { fill: #fff6 }
.k { fill: #0003 }
@media (max-width: 800px) {
    .columns, footer { grid-template-columns: 1fr 1fr; gap: 24px }
    .columns > *, footer form { grid-column: 1 / -1 }
    .hero { grid-template-columns: 1fr; padding: 28px 24px 20px }
    .hero .trio { margin-top: 0 }
    label.button { display: block }
    #filters:not(:checked) ~ .columns .facets { display: none }
    .grid { grid-template-columns: 1fr 1fr; gap: 24px 14px }
    .sort { margin: 0 }
    .facets { position: static }
}
</style>
