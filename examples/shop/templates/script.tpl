<p id="toast" role="status"></p>
<script>
const names = {
{dynamic product,products}{product::*::id}: '{addslashes product::*::name}',
{/dynamic} };
document.querySelector('.grid').addEventListener('click', event => {
    const id = event.target.value;
    if (!names[id]) return;
    const count = document.getElementById('count'), toast = document.getElementById('toast');
    count.textContent = Number(count.textContent) + 1;
    toast.textContent = names[id] + ' is in your basket';
    toast.className = 'shown';
    setTimeout(() => toast.className = '', 2500);
});
</script>
