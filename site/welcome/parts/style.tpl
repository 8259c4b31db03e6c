<style>
body { max-width: 26rem; margin: 2rem auto; padding: 0 1rem; font: 16px/1.6 Georgia, serif; color: #35271d }
h1 { margin: 0; font-size: 2.2rem; color: {cafe::colour '#7a4419'} }
.motto { margin: 0 0 1.5rem; font-style: italic }
.offer { padding: .5rem 1rem; border-left: 4px solid {cafe::colour '#7a4419'}; background: #f6ede2 }
ul { padding: 0 } li { list-style: none; padding: .4rem 0; border-bottom: 1px dotted #c9b59f } li b { float: right }
em { font-size: .75rem; padding: .1rem .5rem; border-radius: 1rem; background: #dfeedd; color: #24512a }
.hint { margin-top: 2rem; font-size: .8rem; color: #806c5a }
</style>
