<!DOCTYPE html>
<html lang="{lang}">
<head><title>{htmlspecialchars title}</title>
{include includes/head.tpl}{include includes/styles.tpl}</head>
<body>
<header>{include includes/logo.tpl}{include includes/menu.tpl}{include includes/search.tpl}</header>
{include includes/path.tpl}<main>
{include includes/banner.tpl}<p>Welcome back, {htmlspecialchars user}. You have been here {visits} times.</p>
{include includes/teaser.tpl}</main>
{include includes/aside.tpl}{include includes/news.tpl}<footer>{include includes/social.tpl}{include includes/footer.tpl}</footer>
</body></html>
